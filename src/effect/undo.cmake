# The state that undo records keep of an effect's values.
target_sources(sorvel_effect PRIVATE ${CMAKE_CURRENT_LIST_DIR}/EffectUndoUpdate.cpp)
