#include "system/File.h"
#include "system/FileName.h"
#include "system/IniFile.h"
#include "system/Log.h"
#include "system/ReplacingFile.h"
#include "system/Text.h"

namespace System {

namespace {

void appendLine(std::string& out, std::string_view key, std::string_view value) {
  out.append(key);
  out += '=';
  out.append(value);
  out += "\r\n";
}

void appendSection(std::string& out, std::string_view name) {
  out += '[';
  out.append(name);
  out += "]\r\n";
}

}  // namespace

IniFile::Save::Save(const IniFile& ini, const std::wstring& path) {
  const std::wstring expanded = FileName::expand(path);
  Log::verbose("System::IniFile::Save::Save", "saveFile : %s", Text::toUtf8(expanded).c_str());
  // The whole document goes out in one write: System::File has no buffer of its own.
  std::string content;
  for (const auto& section : ini.sections()) {
    appendSection(content, section.key);
    for (const auto& entry : section.value) appendLine(content, entry.key, entry.value.text);
  }
  // Replaced whole or not at all: a failure never leaves a half-written settings file.
  ReplacingFile file(expanded);
  file.write(content);
  file.commit();
}

// A line is built first and goes out in one write: the file is unbuffered.
void IniFile::Save::writeLine(File& file, std::string_view key, std::wstring_view value) {
  writeLine(file, key, Text::toUtf8(value));
}

void IniFile::Save::writeLine(File& file, std::string_view key, std::string_view value) {
  std::string line;
  appendLine(line, key, value);
  file.write(line);
}

void IniFile::Save::writeSection(File& file, std::string_view name) {
  std::string line;
  appendSection(line, name);
  file.write(line);
}

}  // namespace System
