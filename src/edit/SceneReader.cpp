#include "edit/SceneReader.h"

#include "edit/EditService.h"

namespace Edit {

SceneReader::SceneReader(EditService& service) : lock_(service.lock()), scene_(service.currentScene()) {}

}  // namespace Edit
