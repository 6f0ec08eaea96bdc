# Frame passes: the CPU references here; both GPU paths against them in sorvel_gpu_tests.
list(APPEND SORVEL_MEDIA_TEST_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/BlendReferenceTest.cpp
  ${CMAKE_CURRENT_LIST_DIR}/FramePassReferenceTest.cpp
)
list(APPEND SORVEL_GPU_TEST_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/FramePassGpuTest.cpp
)
