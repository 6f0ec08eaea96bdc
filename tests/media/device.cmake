# The graphics device: its logic over a recording back end here, the GL back end in
# sorvel_gpu_tests.
list(APPEND SORVEL_MEDIA_TEST_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/DeviceGeometryTest.cpp
  ${CMAKE_CURRENT_LIST_DIR}/DeviceLogicTest.cpp
  ${CMAKE_CURRENT_LIST_DIR}/VertexListSplitTest.cpp
)
list(APPEND SORVEL_GPU_TEST_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/DeviceGpu.cpp
  ${CMAKE_CURRENT_LIST_DIR}/DeviceGpuTest.cpp
  ${CMAKE_CURRENT_LIST_DIR}/FrameTargetGpuTest.cpp
)
