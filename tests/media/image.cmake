# Image buffers, the YUV colour tables, and image files through Qt's readers and writers
# here; the GPU conversions of every CPU image format to and from the frame in
# sorvel_gpu_tests.
list(APPEND SORVEL_MEDIA_TEST_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/ImageBufferTest.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ImageServiceTest.cpp
  ${CMAKE_CURRENT_LIST_DIR}/YUVformatTest.cpp
)
list(APPEND SORVEL_MEDIA_TEST_LIBS sorvel_qt_image)
list(APPEND SORVEL_GPU_TEST_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/ImageConvertGpuTest.cpp
)
# The installation's colour tables are read from the source tree.
set_source_files_properties(${CMAKE_CURRENT_LIST_DIR}/YUVformatTest.cpp
                            PROPERTIES COMPILE_DEFINITIONS SORVEL_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
