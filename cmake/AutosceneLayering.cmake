# Configure-time checks of the layering in README.md: the link graph, not discipline,
# keeps each library to what it may use.

# Every target that `target` links, directly or through others.
function(_autoscene_link_closure target out)
    set(seen "")
    set(queue ${target})
    while(queue)
        list(POP_FRONT queue current)
        if(current IN_LIST seen OR NOT TARGET ${current})
            continue()
        endif()
        list(APPEND seen ${current})
        get_target_property(aliased ${current} ALIASED_TARGET)
        if(aliased)
            list(APPEND queue ${aliased})
        endif()
        get_target_property(type ${current} TYPE)
        set(links "")
        if(NOT type STREQUAL "INTERFACE_LIBRARY")
            get_target_property(direct ${current} LINK_LIBRARIES)
            if(direct)
                list(APPEND links ${direct})
            endif()
        endif()
        get_target_property(interface ${current} INTERFACE_LINK_LIBRARIES)
        if(interface)
            list(APPEND links ${interface})
        endif()
        foreach(link IN LISTS links)
            string(REGEX REPLACE "^\\$<LINK_ONLY:(.*)>$" "\\1" link "${link}")
            list(APPEND queue ${link})
        endforeach()
    endwhile()
    list(REMOVE_ITEM seen ${target})
    set(${out} ${seen} PARENT_SCOPE)
endfunction()

# Fails the configuration when `target` reaches any of the targets after FORBIDDEN.
function(autoscene_forbid_links target)
    cmake_parse_arguments(arg "" "" "FORBIDDEN" ${ARGN})
    if(NOT TARGET ${target})
        return()
    endif()
    _autoscene_link_closure(${target} reached)
    foreach(forbidden IN LISTS arg_FORBIDDEN)
        if(forbidden IN_LIST reached)
            message(FATAL_ERROR "layering: ${target} links ${forbidden}, which it must not use "
                                "(README.md, \"Libraries\")")
        endif()
    endforeach()
endfunction()

# Fails the configuration when a file under `folder` includes a header by a bare name:
# every include of the project's own headers names the library it comes from.
function(autoscene_forbid_bare_includes folder)
    file(GLOB_RECURSE sources ${folder}/*.h ${folder}/*.cpp)
    foreach(source IN LISTS sources)
        file(STRINGS ${source} bare REGEX "^[ \t]*#[ \t]*include[ \t]+\"[^/\"]+\"")
        if(bare)
            list(GET bare 0 first)
            message(FATAL_ERROR "layering: ${source} includes without a library prefix: ${first}")
        endif()
    endforeach()
endfunction()

function(autoscene_check_layering)
    set(above_engine autoscene_engine autoscene_conditions autoscene_targets autoscene_script
        autoscene_plugins autoscene_actions autoscene_playback autoscene_app autoscene_editor
        autoscene_ui)
    # Leaves know nothing of the engine or what stands on it.
    foreach(leaf autoscene_model autoscene_system autoscene_http autoscene_desktop autoscene_keys
            autoscene_android autoscene_x11 autoscene_win32 autoscene_recognition autoscene_text)
        autoscene_forbid_links(${leaf} FORBIDDEN ${above_engine})
    endforeach()
    # No Qt in the platform back ends and the process utilities.
    foreach(leaf autoscene_system autoscene_http autoscene_desktop autoscene_keys autoscene_android
            autoscene_x11 autoscene_win32)
        autoscene_forbid_links(${leaf} FORBIDDEN Qt6::Core Qt6::Gui Qt6::Widgets)
    endforeach()
    # The engine runs headless and reaches recognition and text through its interfaces, so
    # neither it nor the runner's tests link DNN or curl.
    foreach(target autoscene_engine engine_tests engine_bench)
        autoscene_forbid_links(${target} FORBIDDEN opencv_dnn CURL::libcurl autoscene_http
            autoscene_recognition autoscene_text autoscene_conditions autoscene_targets
            autoscene_actions autoscene_app autoscene_x11 autoscene_win32 autoscene_script
            autoscene_plugins autoscene_playback Qt6::Qml)
    endforeach()
    autoscene_forbid_links(autoscene_conditions FORBIDDEN autoscene_targets autoscene_script
        autoscene_actions autoscene_app)
    autoscene_forbid_links(autoscene_targets FORBIDDEN autoscene_conditions autoscene_script
        autoscene_actions autoscene_app)
    # Scripts reach windows through the desktop contract, never a back end directly.
    autoscene_forbid_links(autoscene_script FORBIDDEN autoscene_targets autoscene_actions
        autoscene_app autoscene_x11 autoscene_win32)
    # Plug-ins reach windows through the target's plug-in contract, never a back end.
    autoscene_forbid_links(autoscene_plugins FORBIDDEN autoscene_conditions autoscene_script
        autoscene_actions autoscene_app autoscene_x11 autoscene_win32)
    autoscene_forbid_links(autoscene_actions FORBIDDEN autoscene_playback autoscene_app)
    # The editor's test on the screen runs the runner's own items; the application stands on it.
    autoscene_forbid_links(autoscene_probe FORBIDDEN autoscene_playback autoscene_app)
    # Recordings see a run through the engine's observers; the programs choose the items.
    autoscene_forbid_links(autoscene_playback FORBIDDEN autoscene_app autoscene_editor autoscene_ui)
    # The editor is the lower half of the application: the frame uses it, never the reverse.
    autoscene_forbid_links(autoscene_editor FORBIDDEN autoscene_ui autoscene_screen)
    # The screen tools stand on the editor and serve the frame.
    autoscene_forbid_links(autoscene_screen FORBIDDEN autoscene_ui)
    # Only the application uses widgets; the programs below it stay headless.
    foreach(target autoscene_model autoscene_engine autoscene_conditions autoscene_targets
            autoscene_script autoscene_actions autoscene_probe autoscene_playback autoscene_app autoscene-run
            autoscene-task autoscene-replay)
        autoscene_forbid_links(${target} FORBIDDEN autoscene_ui autoscene_editor Qt6::Widgets)
    endforeach()
    autoscene_forbid_bare_includes(${PROJECT_SOURCE_DIR}/src)
endfunction()
