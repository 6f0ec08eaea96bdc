target_sources(sorvel_effect PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/AudioBufferLoad.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AudioLoad.cpp
  ${CMAKE_CURRENT_LIST_DIR}/BeforeObjectLoad.cpp
  ${CMAKE_CURRENT_LIST_DIR}/FigureLoad.cpp
  ${CMAKE_CURRENT_LIST_DIR}/FileSequence.cpp
  ${CMAKE_CURRENT_LIST_DIR}/FrameLoad.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ImageLoad.cpp
  ${CMAKE_CURRENT_LIST_DIR}/InputMovieEffect.cpp
  ${CMAKE_CURRENT_LIST_DIR}/InputMovieRead.cpp
  ${CMAKE_CURRENT_LIST_DIR}/MediaAccess.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ModelLoad.cpp
  ${CMAKE_CURRENT_LIST_DIR}/MovieLoad.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SceneLoad.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SourceFiles.cpp
  ${CMAKE_CURRENT_LIST_DIR}/TextInput.cpp
  ${CMAKE_CURRENT_LIST_DIR}/WaveImageInput.cpp
)
