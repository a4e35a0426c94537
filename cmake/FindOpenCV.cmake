# Debian ships OpenCVConfig.cmake only in libopencv-dev, which pulls in every OpenCV
# module; the per-module -dev packages we install carry headers and libraries only.
# Prefer a config package when there is one, else build the opencv_<module> targets.
find_package(OpenCV CONFIG QUIET COMPONENTS ${OpenCV_FIND_COMPONENTS})
if(OpenCV_FOUND)
    return()
endif()

find_path(OpenCV_INCLUDE_DIR opencv2/core.hpp PATH_SUFFIXES opencv4)
set(_opencv_required OpenCV_INCLUDE_DIR)
foreach(_module IN LISTS OpenCV_FIND_COMPONENTS)
    find_library(OpenCV_${_module}_LIBRARY opencv_${_module})
    list(APPEND _opencv_required OpenCV_${_module}_LIBRARY)
    if(OpenCV_${_module}_LIBRARY AND OpenCV_INCLUDE_DIR AND NOT TARGET opencv_${_module})
        add_library(opencv_${_module} SHARED IMPORTED)
        set_target_properties(opencv_${_module} PROPERTIES
            IMPORTED_LOCATION ${OpenCV_${_module}_LIBRARY}
            INTERFACE_INCLUDE_DIRECTORIES ${OpenCV_INCLUDE_DIR})
    endif()
    list(APPEND OpenCV_LIBS opencv_${_module})
endforeach()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenCV REQUIRED_VARS ${_opencv_required})
