#include "edit/EditService.h"

#include "edit/Scene.h"

namespace Edit {

EditService::EditService() : project_(sceneDefaults_), currentScene_(project_.findScene(0)) {}

EditService::~EditService() = default;

std::shared_ptr<Scene> EditService::getScene(std::int32_t id) { return project_.addScene(id, sceneDefaults_); }

}  // namespace Edit
