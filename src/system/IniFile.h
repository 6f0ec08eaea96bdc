// The one text dialect of the program: every configuration, project and alias file is
// an ini document read into memory and written back through this class. An IniFile has
// no lock; one thread at a time may use it (the main ini: the main thread only).
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "system/OrderedMap.h"

namespace System {

class File;

class IniFile {
 public:
  template <class T>
  using OrderedMap = System::OrderedMap<std::string, T>;

  // One stored value and the typed readings of it. Conversions that a caller insists on
  // throw System::NoteException with a note naming the file, line, section and key.
  class VALUE {
   public:
    VALUE() = default;
    VALUE(std::string text, const IniFile* owner, std::int32_t line)
        : text(std::move(text)), owner(owner), line(line) {}

    std::string text;
    const IniFile* owner = nullptr;
    const VALUE* parent = nullptr;  // the value that `split` took this element from
    std::int32_t line = 0;          // 0 when it did not come from a file
    // Where a value of a document stands, set as it is stored, so that note() needs no
    // search of the document and a reader that reports many values stays linear.
    const std::string* sectionName = nullptr;
    const std::string* keyName = nullptr;

    bool empty() const noexcept { return text.empty(); }

    // The forms without a default throw on empty text; with a default, empty text gives
    // the default. Text that does not convert throws either way: toInt(default) with a
    // text of its own, the others with the text of their form without default.
    std::int32_t toInt() const;
    std::int32_t toInt(std::int32_t defaultValue) const;
    float toFloat() const;
    float toFloat(float defaultValue) const;
    double toDouble() const;
    double toDouble(double defaultValue) const;
    std::wstring toString() const;
    std::wstring toString(const std::wstring& defaultValue) const;
    // "rrggbb" or "rrggbbaa" in hex, blanks around it allowed; channels 0.0 to 1.0.
    void toRGBA(std::array<float, 4>& rgba) const;
    // An empty tail counts: "1,2," gives three elements.
    std::vector<VALUE> split(std::string_view delimiter) const;

    // The same readings without an exception, for callers to whom a bad value simply
    // means the default. Empty text fails the numbers and is an empty string.
    std::optional<std::int32_t> tryInt() const;
    std::optional<float> tryFloat() const;
    std::optional<double> tryDouble() const;
    std::optional<std::wstring> tryString() const;

    // Numbers are written in the C locale whatever the process locale is; floats and
    // doubles with six decimals, as "%f" writes them.
    void setInt(std::int32_t value);
    void setFloat(float value);
    void setDouble(double value);
    void setString(std::wstring_view value);

    // "file=<name>(line <n>) section=<section> key=<key>", the context of error texts;
    // empty for a value that belongs to no document.
    std::string note() const;
    // The same, for a caller that knows where the value stands.
    std::string note(std::string_view section, std::string_view key) const;
  };

  using Section = OrderedMap<VALUE>;
  using Sections = OrderedMap<Section>;

  // A section of a document, or the static empty section after a lookup that missed.
  // Holders must not outlive the document.
  class SectionRef {
   public:
    const std::string& name() const noexcept { return entry_->key; }
    bool empty() const noexcept { return entry_->value.empty(); }
    std::size_t size() const noexcept { return entry_->value.size(); }
    bool contains(std::string_view key) const { return entry_->value.find(key) != nullptr; }

    // Throws "ini file parameter undefined." for a missing key.
    VALUE& getValue(std::string_view key) const;
    // The static empty VALUE for a missing key.
    const VALUE& find(std::string_view key) const;
    const VALUE& operator[](std::string_view key) const { return find(key); }

    auto begin() const noexcept { return entry_->value.begin(); }
    auto end() const noexcept { return entry_->value.end(); }

   private:
    friend class IniFile;
    explicit SectionRef(Sections::Entry* entry) : entry_(entry) {}

    Sections::Entry* entry_;
  };

  // The writer. The constructor writes a whole document; the static helpers let the
  // project writers stream sections straight to a file without building a document.
  class Save {
   public:
    // Lets the exceptions of System::File pass; the document is not changed.
    Save(const IniFile& ini, const std::wstring& path);

    static void writeLine(File& file, std::string_view key, std::wstring_view value);
    static void writeLine(File& file, std::string_view key, std::string_view value);
    static void writeSection(File& file, std::string_view name);
  };

  IniFile() = default;
  // Writes the document to its file name when write-on-destruction is set. A failure
  // has logged its ERROR line and is not passed on: a destructor cannot throw.
  ~IniFile();
  // VALUEs point at their document, so a document never moves.
  IniFile(const IniFile&) = delete;
  IniFile& operator=(const IniFile&) = delete;

  // A path with a leading variable is expanded. Without `merge` the document is cleared
  // and takes the expanded path as its file name, even when the file is missing; with
  // `merge` only keys that are missing are added. A file that cannot be read leaves the
  // document as it is. `ansi` files are CP932.
  void loadFile(std::wstring_view path, bool merge = false, bool ansi = false);
  // A load without merge for a caller that must say why a file was not read: a file
  // that File::readAll refuses, or one in UTF-16, throws and leaves the document empty.
  void readFile(std::wstring_view path);
  // Clears the document, its file name included, and reads `text`.
  void loadMemory(std::string_view text);
  // The last load began with a UTF-8 byte order mark, which was skipped.
  bool byteOrderMarkSkipped() const noexcept { return byteOrderMarkSkipped_; }

  SectionRef section(std::string_view name);
  // The section "<name>.<index>", one element of a series.
  SectionRef section(std::string_view name, int index);
  // Creates the section and the key, with empty text, when they are missing.
  VALUE& value(std::string_view sectionName, std::string_view key);

  const Sections& sections() const noexcept { return sections_; }
  const std::wstring& fileName() const noexcept { return fileName_; }
  bool writeOnDestruction() const noexcept { return writeOnDestruction_; }
  void setWriteOnDestruction(bool write) noexcept { writeOnDestruction_ = write; }

 private:
  // The bytes of a file for read(); throws for a file that cannot be used at all.
  static std::string readText(const std::wstring& path);
  // `filePath` names the file being read, for the warnings; null for memory text.
  void read(std::string_view text, bool merge, bool ansi, const std::wstring* filePath);
  // "file=<name>(line <n>)", the first half of every note; the line only when known.
  static std::string describeFile(const std::wstring& fileName, std::int32_t line);

  Sections sections_;
  std::wstring fileName_;
  bool writeOnDestruction_ = false;
  bool byteOrderMarkSkipped_ = false;
};

}  // namespace System
