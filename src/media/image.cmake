# Pixels on the CPU: image buffers and the bitmap forms of codecs and plug-ins, the YUV
# colour tables, the GPU conversions to and from the frame's format, and image files.
target_sources(sorvel_media PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/image/ImageBuffer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/image/ImageService.cpp
  ${CMAKE_CURRENT_LIST_DIR}/image/ResourceConvert.cpp
  ${CMAKE_CURRENT_LIST_DIR}/image/YUVformat.cpp
)
