# The device as a service of the start sequence: it reads the settings and shows the
# start's warning through the message boxes.
target_sources(sorvel_media PRIVATE ${CMAKE_CURRENT_LIST_DIR}/GraphicsService.cpp)
target_link_libraries(sorvel_media PUBLIC sorvel_setting sorvel_dialog)
