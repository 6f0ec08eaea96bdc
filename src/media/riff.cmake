# RIFF files (AVI, WAV): chunks found by their codes, and the codes compared as readers do.
target_sources(sorvel_media PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/riff/RiffFile.cpp
)
