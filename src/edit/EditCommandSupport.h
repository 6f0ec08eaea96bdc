// What the files of Edit::EditCommand share: the place of their log lines and the
// requests most commands make of their section's close. Private to those files.
#pragma once

#include <initializer_list>
#include <string>

#include "edit/EditSection.h"

namespace Edit::CommandSupport {

using Request = EditSection::Request;

// Every log line of a command carries "Edit::EditCommand::" and the command's name.
inline std::string place(const char* command) { return std::string("Edit::EditCommand::") + command; }

inline void request(EditSection& section, std::initializer_list<Request> requests) {
  for (const Request request : requests) section.request(request);
}

// What the settings windows need after the chain or the points of an object changed.
inline void requestPanels(EditSection& section) {
  request(section, {Request::Rebuild, Request::Time, Request::Colour, Request::Text, Request::Object});
}

// What the timeline and the settings window need after frames moved.
inline void requestFrames(EditSection& section) {
  request(section, {Request::Update, Request::Reset, Request::Time, Request::Object});
}

}  // namespace Edit::CommandSupport
