#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "support/TempDirectory.h"
#include "system/File.h"
#include "system/FileName.h"
#include "system/Text.h"

namespace {

using System::FileName::expand;

class FileNameTest : public ::testing::Test {
 protected:
  void SetUp() override { System::FileName::initializeVariableList(install_.wide()); }
  TestSupport::TempDirectory install_;
};

TEST_F(FileNameTest, ExpandsOnlyAKnownVariableAtTheStart) {
  const std::wstring plugin = expand(L"%Plugin%");
  EXPECT_EQ(plugin, (TestSupport::dataHome() / "sorvel2" / "Plugin").wstring());
  EXPECT_EQ(expand(L"100%"), L"100%");
  EXPECT_EQ(expand(L"%Unknown%\\a"), L"%Unknown%\\a");
  EXPECT_EQ(expand(L"C:\\%Plugin%\\a"), L"C:\\%Plugin%\\a");
  EXPECT_EQ(expand(L"%Plugin%/a%Plugin%"), plugin + L"/a" + plugin);
  EXPECT_EQ(expand(expand(L"%Log%/x.log")), expand(L"%Log%/x.log"));
  EXPECT_EQ(expand(L"%AppInstall%/system.conf"), install_.wide() + L"/system.conf");
}

TEST_F(FileNameTest, CreatesTheDataTree) {
  for (const char* folder : {"Plugin", "Script", "Default", "Alias", "Figure", "Transition", "Language", "Backup", "Log"}) {
    EXPECT_TRUE(std::filesystem::is_directory(TestSupport::dataHome() / "sorvel2" / folder)) << folder;
  }
}

TEST_F(FileNameTest, DataFolderBesideTheProgramMeansPortable) {
  std::filesystem::create_directory(install_.path() / "data");
  System::FileName::initializeVariableList(install_.wide());
  EXPECT_EQ(expand(L"%AppData%"), install_.wide() + L"/data");
  EXPECT_TRUE(std::filesystem::is_directory(install_.path() / "data" / "Backup"));

  TestSupport::TempDirectory other;
  other.writeFile("data", "a file, not a folder");
  System::FileName::initializeVariableList(other.wide());
  EXPECT_EQ(expand(L"%AppData%"), (TestSupport::dataHome() / "sorvel2").wstring());
}

TEST_F(FileNameTest, TimeStampedNameHasTheFixedShape) {
  const std::wstring name = System::FileName::timeStamped(L"%Backup%/", L"AutoBackup", L"svj2");
  const std::string utf8 = System::Text::toUtf8(name);
  const std::string folder = (TestSupport::dataHome() / "sorvel2" / "Backup").string();
  ASSERT_EQ(utf8.rfind(folder + "/", 0), 0u) << utf8;
  EXPECT_TRUE(std::regex_match(utf8.substr(folder.size() + 1),
                               std::regex(R"(AutoBackup_\d{4}-\d\d-\d\d_\d\d-\d\d-\d\d-\d{3}\.svj2)")))
      << utf8;
}

TEST(FileNameHelpers, AcceptBothSeparators) {
  using namespace System::FileName;
  EXPECT_EQ(extension(L"a.b\\c"), L"");
  EXPECT_EQ(extension(L"a.b/c"), L"");
  EXPECT_EQ(extension(L"a.PNG"), L"png");
  EXPECT_EQ(extension(L"dir/archive.tar.GZ"), L"gz");
  EXPECT_EQ(directoryPart(L"C:\\media\\clip.avi"), L"C:\\media");
  EXPECT_EQ(directoryPart(L"/home/a/clip.avi"), L"/home/a");
  EXPECT_EQ(directoryPart(L"clip.avi"), L"");
  EXPECT_EQ(baseName(L"C:\\media\\clip.final.avi"), L"clip.final");
  EXPECT_EQ(baseName(L"noext"), L"noext");
}

}  // namespace
