#include <gtest/gtest.h>

#include <cstdlib>

#include <array>
#include <clocale>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "support/TempDirectory.h"
#include "system/Exception.h"
#include "system/File.h"
#include "system/IniFile.h"
#include "system/Log.h"
#include "system/Text.h"

namespace {

using System::IniFile;

// Collects "LEVEL|place|message" for every line logged while it lives.
class LogCapture {
 public:
  LogCapture() {
    System::Log::setHandler([this](const System::Log::Type& type, const char* place, const char* message) {
      lines.push_back(std::string(type.name) + "|" + place + "|" + message);
    });
  }
  ~LogCapture() { System::Log::resetHandler(); }
  std::vector<std::string> lines;
};

std::vector<std::string> keysOf(const IniFile::SectionRef& section) {
  std::vector<std::string> keys;
  for (const auto& entry : section) keys.push_back(entry.key);
  return keys;
}

std::vector<std::string> sectionNames(const IniFile& ini) {
  std::vector<std::string> names;
  for (const auto& section : ini.sections()) names.push_back(section.key);
  return names;
}

std::string messageOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const System::Exception& exception) {
    return exception.what();
  }
  return "no exception";
}

TEST(IniFileRead, KeepsKeysValuesAndOrderAsWritten) {
  IniFile ini;
  ini.loadMemory("[a]\r\nkey=value\n;comment=no\n\n x = 1 \r\r\n[b]\nk=v=w\n[a]\nempty=\nlast=1");
  EXPECT_EQ(sectionNames(ini), (std::vector<std::string>{"a", "b"}));
  const IniFile::SectionRef a = ini.section("a");
  EXPECT_EQ(keysOf(a), (std::vector<std::string>{"key", " x ", "empty", "last"}));
  EXPECT_EQ(a[" x "].text, " 1 ");
  EXPECT_EQ(a["last"].text, "1");
  EXPECT_EQ(a["last"].line, 10);
  EXPECT_EQ(a["key"].line, 2);
  EXPECT_EQ(a["key"].owner, &ini);
  EXPECT_TRUE(a.contains("empty"));
  EXPECT_EQ(ini.section("b")["k"].text, "v=w");
}

TEST(IniFileRead, MissesGiveStaticEmptiesAndSeriesAreFoundByIndex) {
  IniFile ini;
  ini.loadMemory("[scene.0]\nname=a\n[scene.1]\nname=b\n");
  EXPECT_EQ(ini.section("scene", 1)["name"].text, "b");
  EXPECT_EQ(&ini.section("scene", 0)["name"], &ini.section("scene.0")["name"]);
  EXPECT_TRUE(ini.section("scene", 2).empty());
  const IniFile::VALUE& missing = ini.section("scene.0")["nothing"];
  EXPECT_TRUE(missing.empty());
  EXPECT_EQ(missing.owner, nullptr);
  EXPECT_EQ(&missing, &ini.section("none")["name"]);
}

TEST(IniFileRead, WarningsNameTheLineAndGoOnReading) {
  const std::string text = "orphan=1\n[s]\nk=1\nk=2\nno equals\n[]\nq=1\n";
  TestSupport::TempDirectory folder;
  const std::string path = folder.writeFile("w.ini", text).string();
  LogCapture log;
  IniFile ini;
  ini.loadMemory(text);
  EXPECT_EQ(ini.section("s")["k"].text, "1");
  EXPECT_EQ(sectionNames(ini), (std::vector<std::string>{"s", ""}));
  ini.loadFile(System::Text::fromUtf8(path));
  const std::string file = "WARN|System::IniFile::loadFile|ini file line illegal format. file=" + path;
  EXPECT_EQ(log.lines, (std::vector<std::string>{
                           "WARN|System::IniFile::loadMemory|illegal format. line=1",
                           "WARN|System::IniFile::loadMemory|parameter duplicate key? line=4",
                           "WARN|System::IniFile::loadMemory|illegal format. line=5",
                           "WARN|System::IniFile::loadMemory|illegal format. line=7",
                           file + "(line 1)",
                           "WARN|System::IniFile::loadFile|ini file parameter duplicate key? file=" + path +
                               "(line 4) section=s key=k",
                           file + "(line 5)",
                           file + "(line 7)",
                           "VERBOSE|System::IniFile::loadFile|load ini file : " + path + " (section=2)",
                       }));
}

// A missing file is no error: the document is emptied and named, and nothing is logged.
// A merge then fills in what is missing and keeps existing keys without a warning.
TEST(IniFileRead, MergeOnlyAddsWhatIsMissing) {
  TestSupport::TempDirectory folder;
  const std::string install = folder.writeFile("install.ini", "[s]\na=2\nb=3\n[t]\nc=4\n").string();
  IniFile ini;
  ini.loadMemory("[old]\nk=1\n");
  LogCapture log;
  ini.loadFile(folder.wide() + L"/user.ini");
  EXPECT_TRUE(ini.sections().empty());
  ini.value("s", "a").text = "1";
  ini.loadFile(System::Text::fromUtf8(install), true);
  EXPECT_EQ(ini.section("s")["a"].text, "1");
  EXPECT_EQ(ini.section("s")["b"].text, "3");
  EXPECT_EQ(ini.section("t")["c"].text, "4");
  EXPECT_EQ(ini.fileName(), folder.wide() + L"/user.ini");
  EXPECT_EQ(log.lines,
            std::vector<std::string>{"VERBOSE|System::IniFile::loadFile|load ini file : " + install + " (section=2)"});
}

// What a text editor adds or changes when a user saves a file by hand: a UTF-8 byte
// order mark is skipped, and the document says so; UTF-16 is refused, not read as
// lines of garbage. Files that are not plain files, or too large, are never read.
TEST(IniFileRead, EncodingsAndFilesThatCannotBeText) {
  TestSupport::TempDirectory folder;
  folder.writeFile("marked.ini", "\xef\xbb\xbf[s]\r\nk=1\r\n");
  IniFile ini;
  ini.readFile(folder.wide() + L"/marked.ini");
  EXPECT_EQ(sectionNames(ini), std::vector<std::string>{"s"});
  EXPECT_TRUE(ini.byteOrderMarkSkipped());
  ini.loadMemory("[s]\nk=1\n");
  EXPECT_FALSE(ini.byteOrderMarkSkipped());

  folder.writeFile("wide.ini", std::string("\xff\xfe[\0s\0]\0\r\0\n\0", 12));
  folder.writeFile("wide-unmarked.ini", std::string("[\0s\0]\0", 6));
  for (const wchar_t* name : {L"/wide.ini", L"/wide-unmarked.ini"}) {
    const std::wstring path = folder.wide() + name;
    EXPECT_EQ(messageOf([&] { ini.readFile(path); }),
              "ini file is UTF-16 text; only UTF-8 is read.\n\n[Note]\n" + System::Text::toUtf8(path) +
                  "\n\n[Place]\nSystem::IniFile::loadFile()");
    EXPECT_TRUE(ini.sections().empty());
    ini.loadMemory("[kept]\n");
    ini.loadFile(path, true);  // a settings file: refused quietly, the document stays
    EXPECT_EQ(sectionNames(ini), std::vector<std::string>{"kept"});
  }

  // A device that never ends: refused before a byte is read.
  EXPECT_NE(messageOf([&] { ini.readFile(L"/dev/zero"); }).find("not a regular file."), std::string::npos);
  ini.loadFile(L"/dev/zero");
  EXPECT_TRUE(ini.sections().empty());
  EXPECT_EQ(ini.fileName(), L"/dev/zero");
}

TEST(IniFileRead, AnsiFilesAreReadAsCp932) {
  TestSupport::TempDirectory folder;
  folder.writeFile("old.ini", "[\x93\xfa\x96\x7b]\nname=\x83\x65\x83\x58\x83\x67\r\n");
  IniFile ini;
  ini.loadFile(folder.wide() + L"/old.ini", false, true);
  EXPECT_EQ(ini.section("日本")["name"].toString(), L"テスト");
}

TEST(IniFileWrite, RoundTripKeepsEveryByte) {
  TestSupport::TempDirectory folder;
  const std::string text = "[first]\r\nk=v\r\nspaced = yes \r\nempty=\r\n[]\r\n[second]\r\nurl=a=b\r\n";
  folder.writeFile("in.ini", text);
  IniFile ini;
  ini.loadFile(folder.wide() + L"/in.ini");
  IniFile::Save(ini, folder.wide() + L"/out.ini");
  EXPECT_EQ(folder.readFile("out.ini"), text);
}

TEST(IniFileWrite, NewKeysAreAppendedAndWrittenOnDestruction) {
  TestSupport::TempDirectory folder;
  {
    IniFile ini;
    ini.loadFile(folder.wide() + L"/new.ini");
    ini.value("b", "x").setString(L"é");
    ini.value("a", "y").setInt(-12);
    ini.value("b", "z").setDouble(2.5);
    ini.setWriteOnDestruction(true);
  }
  EXPECT_EQ(folder.readFile("new.ini"), "[b]\r\nx=\xc3\xa9\r\nz=2.500000\r\n[a]\r\ny=-12\r\n");
}

TEST(IniFileWrite, HelpersStreamLinesWithoutADocument) {
  TestSupport::TempDirectory folder;
  {
    System::File file;
    file.open(folder.wide() + L"/stream.ini", System::File::Mode::Write);
    IniFile::Save::writeSection(file, "scene.0");
    IniFile::Save::writeLine(file, "name", L"ルート");
    IniFile::Save::writeLine(file, "width", "1920");
  }
  EXPECT_EQ(folder.readFile("stream.ini"), "[scene.0]\r\nname=\xe3\x83\xab\xe3\x83\xbc\xe3\x83\x88\r\nwidth=1920\r\n");
}

TEST(IniFileValue, NumbersFollowTheStrtolRules) {
  const auto value = [](const char* text) { return IniFile::VALUE(text, nullptr, 0); };
  EXPECT_EQ(value(" \t12abc").toInt(), 12);
  EXPECT_EQ(value("+7").toInt(), 7);
  EXPECT_EQ(value("-2147483648").toInt(), INT32_MIN);
  EXPECT_EQ(value("0x10").toInt(), 0);
  EXPECT_EQ(value("").toInt(5), 5);
  for (const char* bad : {"", "abc", "+-1", "2147483648"}) EXPECT_FALSE(value(bad).tryInt()) << bad;
  EXPECT_EQ(value(" -.25x").toFloat(), -0.25f);
  EXPECT_EQ(value("2e").toFloat(), 2.0f);
  EXPECT_EQ(value("0x1p3").toFloat(), 0.0f);
  for (const char* bad : {"", ".", "e5", "inf", "-nan", "1e39"}) EXPECT_FALSE(value(bad).tryFloat()) << bad;
  EXPECT_EQ(value("1e39").toDouble(), 1e39);
  EXPECT_EQ(value("").toDouble(0.75), 0.75);
  EXPECT_EQ(value("").toString(L"d"), L"d");
  EXPECT_FALSE(value("\xff").tryString());
}

TEST(IniFileValue, FailuresThrowTheirTextWithTheValuesPlace) {
  TestSupport::TempDirectory folder;
  const std::string path = folder.writeFile("c.ini", "[s]\n\nn=abc\nlist=1,x\n").string();
  IniFile ini;
  ini.loadFile(System::Text::fromUtf8(path));
  const IniFile::SectionRef s = ini.section("s");
  const std::string note = "\n\n[Note]\nfile=" + path + "(line 3) section=s key=n\n\n[Place]\n";
  EXPECT_EQ(messageOf([&] { s["n"].toInt(); }),
            "ini file parameter invalid format(int) or undefined." + note + "System::IniFile::VALUE::toInt()");
  EXPECT_EQ(messageOf([&] { s["n"].toInt(1); }),
            "ini file parameter invalid format(int)." + note + "System::IniFile::VALUE::toInt()");
  EXPECT_EQ(messageOf([&] { s["n"].toFloat(1.0f); }),
            "ini file parameter invalid format(float) or undefined." + note + "System::IniFile::VALUE::toFloat()");
  EXPECT_EQ(messageOf([&] { s.getValue("none"); }),
            "ini file parameter undefined.\n\n[Note]\n section=s key=none\n\n[Place]\n"
            "System::IniFile::SectionRef::getValue()");
  // An element of a split reports the place of the value it came from.
  EXPECT_EQ(messageOf([&] { s["list"].split(",")[1].toInt(); }),
            "ini file parameter invalid format(int) or undefined.\n\n[Note]\nfile=" + path +
                "(line 4) section=s key=list\n\n[Place]\nSystem::IniFile::VALUE::toInt()");
  // A value of no document has no note.
  EXPECT_EQ(messageOf([] { IniFile::VALUE().toString(); }),
            "ini file parameter invalid format(UTF8) or undefined.\n\n[Place]\nSystem::IniFile::VALUE::toString()");
}

TEST(IniFileValue, ColoursAreHexBytesOverTwoFiftyFive) {
  const float half = static_cast<float>(128 / 255.0);
  std::array<float, 4> rgba{};
  IniFile::VALUE(" ff8000\t", nullptr, 0).toRGBA(rgba);
  EXPECT_EQ(rgba, (std::array<float, 4>{1.0f, half, 0.0f, 1.0f}));
  IniFile::VALUE("FF800080", nullptr, 0).toRGBA(rgba);
  EXPECT_EQ(rgba[3], half);
  for (const char* bad : {"ff80", "gg0000", ""}) {
    EXPECT_EQ(messageOf([&] { IniFile::VALUE(bad, nullptr, 0).toRGBA(rgba); }),
              "ini file parameter invalid format(RGB) or undefined.\n\n[Place]\nSystem::IniFile::VALUE::toRGBA()");
  }
}

TEST(IniFileValue, SplitKeepsTheEmptyTailAndTheOrigin) {
  IniFile ini;
  ini.loadMemory("[s]\n\nv=1,2,\n");
  const IniFile::VALUE& whole = ini.section("s")["v"];
  const std::vector<IniFile::VALUE> parts = whole.split(",");
  ASSERT_EQ(parts.size(), 3u);
  EXPECT_EQ(parts[1].text, "2");
  EXPECT_EQ(parts[2].text, "");
  EXPECT_EQ(parts[2].parent, &whole);
  EXPECT_EQ(parts[2].owner, &ini);
  EXPECT_EQ(parts[2].line, 3);
}

// The toolkit sets LC_NUMERIC from the environment; files must not follow it.
TEST(IniFileValue, NumbersIgnoreTheProcessLocale) {
  // Machines rarely have a comma locale compiled; make one from the locale sources.
  TestSupport::TempDirectory locales;
  bool commaLocale = std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr;
  if (!commaLocale) {
    const std::string command = "localedef -i de_DE -f UTF-8 " + locales.path().string() + "/de_DE.UTF-8 2>/dev/null";
    if (std::system(command.c_str()) == 0) {
      setenv("LOCPATH", locales.path().c_str(), 1);
      commaLocale = std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr;
      unsetenv("LOCPATH");
    }
  }
  if (!commaLocale) GTEST_SKIP() << "no locale with a decimal comma can be made (package locales)";
  ASSERT_STREQ(std::localeconv()->decimal_point, ",");
  IniFile::VALUE value;
  value.setFloat(0.5f);
  const float read = IniFile::VALUE("1.25", nullptr, 0).toFloat();
  std::setlocale(LC_NUMERIC, "C");
  EXPECT_EQ(value.text, "0.500000");
  EXPECT_EQ(read, 1.25f);
}

}  // namespace
