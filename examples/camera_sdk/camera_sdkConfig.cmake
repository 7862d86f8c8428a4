# Tells CMake where a maker's libraries are: -DMEDIACHECKD_PLATFORM=camera_sdk finds this file below
# CMAKE_PREFIX_PATH and links what it names.
add_library(camera_sdk::camera_sdk SHARED IMPORTED)
set_target_properties(camera_sdk::camera_sdk PROPERTIES
    IMPORTED_LOCATION ${CMAKE_CURRENT_LIST_DIR}/libcamera_sdk.so IMPORTED_NO_SONAME TRUE)
