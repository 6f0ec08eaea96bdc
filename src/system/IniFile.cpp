#include "system/IniFile.h"

#include <exception>

#include "system/Exception.h"
#include "system/File.h"
#include "system/FileName.h"
#include "system/Log.h"
#include "system/Text.h"

namespace System {

namespace {

constexpr const char* kLoadFilePlace = "System::IniFile::loadFile";
constexpr const char* kLoadMemoryPlace = "System::IniFile::loadMemory";

// A series section name is cut to 63 bytes, as the writers of series build it.
constexpr std::size_t kSeriesNameCapacity = 64;

IniFile::Sections::Entry& emptySection() {
  static IniFile::Sections::Entry empty{std::string_view()};
  return empty;
}

}  // namespace

IniFile::~IniFile() {
  if (!writeOnDestruction_) return;
  try {
    Save(*this, fileName_);
  } catch (const std::exception&) {
    // Already logged as the exception was built; the previous file stays on disk.
  }
}

void IniFile::loadFile(std::wstring_view path, bool merge, bool ansi) {
  const std::wstring expanded = FileName::expand(path);
  if (!merge) {
    sections_.clear();
    fileName_ = expanded;
  }
  // A missing file is the normal case on a first run: test first, so that only a file
  // that exists and still cannot be read logs an error.
  if (!File::exists(expanded)) return;
  std::string content;
  try {
    content = readText(expanded);
  } catch (const Exception&) {
    // Logged as it was built; the document stays as it is.
    return;
  }
  read(content, merge, ansi, &expanded);
  Log::verbose(kLoadFilePlace, "load ini file : %s (section=%d)", Text::toUtf8(expanded).c_str(),
               static_cast<int>(sections_.size()));
}

void IniFile::readFile(std::wstring_view path) {
  const std::wstring expanded = FileName::expand(path);
  sections_.clear();
  fileName_ = expanded;
  read(readText(expanded), false, false, &expanded);
  Log::verbose(kLoadFilePlace, "load ini file : %s (section=%d)", Text::toUtf8(expanded).c_str(),
               static_cast<int>(sections_.size()));
}

void IniFile::loadMemory(std::string_view text) {
  sections_.clear();
  fileName_.clear();
  read(text, false, false, nullptr);
}

std::string IniFile::readText(const std::wstring& path) {
  std::string text = File::readAll(path);
  // Notepad and friends write UTF-16 with a byte order mark; without one, the zero byte
  // beside the first character gives it away. Read as UTF-8 it would be nothing but
  // illegal lines.
  const bool marked = text.starts_with("\xff\xfe") || text.starts_with("\xfe\xff");
  const bool zeroBeside = text.size() >= 2 && (text[0] == '\0') != (text[1] == '\0');
  if (marked || zeroBeside) {
    throw NoteException(kLoadFilePlace, "ini file is UTF-16 text; only UTF-8 is read.", Text::toUtf8(path));
  }
  return text;
}

void IniFile::read(std::string_view text, bool merge, bool ansi, const std::wstring* filePath) {
  // Files saved as "UTF-8 with BOM" are UTF-8 all the same; the mark is no part of the
  // first line.
  constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
  if (!merge) byteOrderMarkSkipped_ = false;
  if (text.starts_with(kByteOrderMark)) {
    text.remove_prefix(kByteOrderMark.size());
    byteOrderMarkSkipped_ = true;
    Log::info(filePath ? kLoadFilePlace : kLoadMemoryPlace, "ini file byte order mark skipped. file=%s",
              filePath ? Text::toUtf8(*filePath).c_str() : "");
  }
  Sections::Entry* current = nullptr;
  std::int32_t lineNumber = 0;
  std::string converted;
  for (std::size_t from = 0; from < text.size();) {
    const std::size_t end = text.find('\n', from);
    std::string_view line = text.substr(from, end == std::string_view::npos ? std::string_view::npos : end - from);
    from = end == std::string_view::npos ? text.size() : end + 1;
    ++lineNumber;
    while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) line.remove_suffix(1);
    if (line.empty() || line.front() == ';') continue;
    if (ansi) {
      converted = Text::toUtf8(Text::fromCp932(line));
      line = converted;
    }

    if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
      current = sections_.tryEmplace(line.substr(1, line.size() - 2)).first;
      continue;
    }

    // "[]" does open a section, but a key below it counts as one before any section.
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || !current || current->key.empty()) {
      if (filePath) {
        Log::warn(kLoadFilePlace, "ini file line illegal format. file=%s(line %d)", Text::toUtf8(*filePath).c_str(),
                  lineNumber);
      } else {
        Log::warn(kLoadMemoryPlace, "illegal format. line=%d", lineNumber);
      }
      continue;
    }

    const std::string_view key = line.substr(0, equals);
    const auto [entry, inserted] = current->value.tryEmplace(key, std::string(line.substr(equals + 1)), this, lineNumber);
    if (inserted) {
      entry->value.sectionName = &current->key;
      entry->value.keyName = &entry->key;
    }
    if (inserted || merge) continue;
    if (filePath) {
      const std::string note = describeFile(*filePath, lineNumber) + " section=" + current->key + " key=" +
                               std::string(key);
      Log::warn(kLoadFilePlace, "ini file parameter duplicate key? %s", note.c_str());
    } else {
      Log::warn(kLoadMemoryPlace, "parameter duplicate key? line=%d", lineNumber);
    }
  }
}

IniFile::SectionRef IniFile::section(std::string_view name) {
  Sections::Entry* entry = sections_.find(name);
  return SectionRef(entry ? entry : &emptySection());
}

IniFile::SectionRef IniFile::section(std::string_view name, int index) {
  return section(Text::format(kSeriesNameCapacity, "%s.%d", std::string(name).c_str(), index));
}

IniFile::VALUE& IniFile::value(std::string_view sectionName, std::string_view key) {
  Sections::Entry* section = sections_.tryEmplace(sectionName).first;
  const auto [entry, inserted] = section->value.tryEmplace(key, std::string(), this, 0);
  if (inserted) {
    entry->value.sectionName = &section->key;
    entry->value.keyName = &entry->key;
  }
  return entry->value;
}

std::string IniFile::describeFile(const std::wstring& fileName, std::int32_t line) {
  std::string text = "file=" + Text::toUtf8(fileName);
  if (line > 0) text += Text::format(32, "(line %d)", line);
  return text;
}

IniFile::VALUE& IniFile::SectionRef::getValue(std::string_view key) const {
  if (Section::Entry* entry = entry_->value.find(key)) return entry->value;
  throw NoteException("System::IniFile::SectionRef::getValue", "ini file parameter undefined.",
                      " section=" + entry_->key + " key=" + std::string(key));
}

const IniFile::VALUE& IniFile::SectionRef::find(std::string_view key) const {
  static const VALUE empty;
  const Section::Entry* entry = entry_->value.find(key);
  return entry ? entry->value : empty;
}

}  // namespace System
