#include "app/CommandLine.h"

#include "system/FileName.h"
#include "system/Log.h"
#include "system/Text.h"

namespace App {

CommandLineMap parseCommandLine(const std::vector<std::wstring>& arguments) {
  constexpr const char* kPlace = "Edit::EditService::parseCommandLine";
  CommandLineMap map;
  for (const std::wstring& argument : arguments) {
    if (argument == L"-restart") {
      map[CommandLineKey::Restart] = L"";
      System::Log::info(kPlace, "option : restart");
    } else if (!argument.empty() && argument[0] == L'-') {
      continue;
    } else if (System::FileName::extension(System::FileName::expand(argument)) == L"svj2") {
      map[CommandLineKey::Project] = argument;
      System::Log::info(kPlace, "project : %s", System::Text::toUtf8(argument).c_str());
    }
  }
  return map;
}

}  // namespace App
