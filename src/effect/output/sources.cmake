target_sources(sorvel_effect PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/AudioOutput.cpp
  ${CMAKE_CURRENT_LIST_DIR}/CameraControl.cpp
  ${CMAKE_CURRENT_LIST_DIR}/CameraLight.cpp
  ${CMAKE_CURRENT_LIST_DIR}/CameraLightAmbient.cpp
  ${CMAKE_CURRENT_LIST_DIR}/CameraLightBloom.cpp
  ${CMAKE_CURRENT_LIST_DIR}/CameraOption.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GroupAudioControl.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GroupControl.cpp
  ${CMAKE_CURRENT_LIST_DIR}/MaterialSetting.cpp
  ${CMAKE_CURRENT_LIST_DIR}/MovieOutput.cpp
  ${CMAKE_CURRENT_LIST_DIR}/PartEffect.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ParticleOutput.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SimpleOutput.cpp
  ${CMAKE_CURRENT_LIST_DIR}/TimeControl.cpp
  ${CMAKE_CURRENT_LIST_DIR}/VideoOutput.cpp
)
