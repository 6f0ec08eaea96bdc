# Media::ShaderCompile: compiles, reflects and checks the GLSL with glslang, no GPU.
list(APPEND SORVEL_MEDIA_TEST_SOURCES ${CMAKE_CURRENT_LIST_DIR}/ShaderCompileTest.cpp)
list(APPEND SORVEL_GPU_TEST_SOURCES ${CMAKE_CURRENT_LIST_DIR}/ShaderCompileGpuTest.cpp)
