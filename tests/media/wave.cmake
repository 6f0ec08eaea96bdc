# The picture of a sound, drawn on OpenGL and read back.
list(APPEND SORVEL_GPU_TEST_SOURCES ${CMAKE_CURRENT_LIST_DIR}/WaveImageGpuTest.cpp)
