# Pixels on the CPU: image buffers and the bitmap forms of codecs and plug-ins.
target_sources(sorvel_media PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/image/ImageBuffer.cpp
)
