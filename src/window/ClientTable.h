// The dockable contents of the editor and where each one stands on a fresh install:
// the table that the start sequence makes its clients from.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "window/WindowClient.h"

namespace Window {

// Every standard client, in order of creation: preview, timeline, object settings,
// object list, scene list, the media explorers (`explorers` of them; the first shown),
// the colour, text and time editors, and the log.
std::vector<ClientDefinition> standardClients(std::int32_t explorers);

// The client of a plug-in window: "Window." + its name, hidden in the centre.
ClientDefinition pluginClient(const std::string& name, const std::wstring& title);

}  // namespace Window
