# Every library exports its own folder under the folder's name and nothing else: its include
# root is a folder in the build tree holding one link to the sources, so
# `#include "engine/TaskRunner.h"` compiles only where autoscene_engine is linked.
function(autoscene_export_folder target)
    get_filename_component(name ${CMAKE_CURRENT_SOURCE_DIR} NAME)
    set(root ${PROJECT_BINARY_DIR}/include/${target})
    file(MAKE_DIRECTORY ${root})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${root}/${name} SYMBOLIC)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "INTERFACE_LIBRARY")
        target_include_directories(${target} INTERFACE ${root})
    else()
        target_include_directories(${target} PUBLIC ${root})
    endif()
endfunction()

# A static library of the sources given, its folder exported, warnings on.
function(autoscene_library target)
    add_library(${target} STATIC ${ARGN})
    autoscene_export_folder(${target})
    autoscene_warnings(${target})
endfunction()
