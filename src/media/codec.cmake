# Streams of AVI and WAV files made into bitmaps and sound: uncompressed data as it lies,
# compressed data through the decoders of a CodecProvider (the program's is on FFmpeg,
# in src/platform/ffmpeg).
target_sources(sorvel_media PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/codec/AudioDecompressor.cpp
  ${CMAKE_CURRENT_LIST_DIR}/codec/VideoDecompressor.cpp
  ${CMAKE_CURRENT_LIST_DIR}/codec/WaveFormat.cpp
)
