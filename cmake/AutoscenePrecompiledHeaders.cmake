# Precompiled headers for the targets heavy with Qt, OpenCV and GoogleTest headers.
# GCC needs about 0.6 s just to load a header of this size (200 MB), against 1-2 s to parse
# what it holds, so a header per target would cost more than it saves on most targets.
# Instead each set is compiled once, by a target of its own, and reused by the targets
# listed with it; the targets with lighter headers (the X11 back end, the OCR service) gain
# less than that one compile costs. GCC ignores a header built with other code-generation
# options (-Winvalid-pch reports it): every target here has the -fPIC that Qt asks for.
# CMAKE_DISABLE_PRECOMPILE_HEADERS turns them off (the tidy preset: clang-tidy reads none).

set(_autoscene_pch_std <algorithm> <atomic> <chrono> <functional> <map> <memory> <mutex>
    <optional> <string> <thread> <vector>)
set(_autoscene_pch_qt <QByteArray> <QHash> <QJsonArray> <QJsonObject> <QRect> <QString>
    <QStringList>)

# A target that only compiles HEADERS for others to reuse. It links what they all link and
# has their warnings (-Wpedantic changes the predefined macros), so that it compiles with
# their options. CMake wants a source beside the header.
function(_autoscene_pch_donor donor)
    cmake_parse_arguments(arg "" "" "HEADERS;LINKS" ${ARGN})
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${donor}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "")
    add_library(${donor} OBJECT ${source})
    target_link_libraries(${donor} PRIVATE ${arg_LINKS})
    autoscene_warnings(${donor})
    target_precompile_headers(${donor} PRIVATE ${arg_HEADERS})
endfunction()

function(_autoscene_pch_reuse donor)
    foreach(target IN LISTS ARGN)
        target_precompile_headers(${target} REUSE_FROM ${donor})
    endforeach()
endfunction()

function(autoscene_precompile_headers)
    # The libraries on top of the model.
    _autoscene_pch_donor(autoscene_pch_qt
        HEADERS ${_autoscene_pch_std} ${_autoscene_pch_qt}
        LINKS Qt6::Core)
    _autoscene_pch_reuse(autoscene_pch_qt
        autoscene_model autoscene_recognition autoscene_text autoscene_engine
        autoscene_conditions autoscene_targets autoscene_plugins autoscene_actions autoscene_app)

    if(NOT AUTOSCENE_BUILD_TESTS)
        return()
    endif()
    _autoscene_pch_reuse(autoscene_pch_qt
        autoscene_test_support autoscene_ocr_testkit autoscene_fuzz_checks runner_program_test)
    if(AUTOSCENE_BUILD_BENCH)
        _autoscene_pch_reuse(autoscene_pch_qt engine_bench matching_bench autoscene_ocr_bench)
    endif()

    # The unit test programs on top of the model: Qt, OpenCV's core and GoogleTest.
    _autoscene_pch_donor(autoscene_pch_tests
        HEADERS ${_autoscene_pch_std} ${_autoscene_pch_qt} <opencv2/core.hpp> <gtest/gtest.h>
        LINKS Qt6::Core opencv_core GTest::gtest)
    _autoscene_pch_reuse(autoscene_pch_tests
        engine_tests actions_tests plugins_tests matching_tests model_tests autoscene_ocr_tests
        autoscene_system_tests fuzz_replay_tests)
endfunction()
