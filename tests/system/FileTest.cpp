#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include "support/TempDirectory.h"
#include "system/DataBuffer.h"
#include "system/Exception.h"
#include "system/File.h"
#include "system/Text.h"

namespace {

std::vector<std::wstring> names(const std::vector<System::DirectoryEntry>& entries) {
  std::vector<std::wstring> result;
  for (const auto& entry : entries) result.push_back(entry.path);
  return result;
}

TEST(FileListing, MatchesTheExactExtensionInNameOrder) {
  TestSupport::TempDirectory folder;
  for (const char* name : {"b.svj2", "a.svj2", "a.svj2x", "x.svj2bak", "c.SVJ", "sub.svj2/inner"}) {
    folder.writeFile(name, "x");
  }
  const std::wstring dir = folder.wide();
  EXPECT_EQ(names(System::listFiles(L"*.svj2", dir)),
            (std::vector<std::wstring>{dir + L"/a.svj2", dir + L"/b.svj2"}));
  EXPECT_EQ(names(System::listDirectories(L"*", dir)), (std::vector<std::wstring>{dir + L"/sub.svj2"}));
  EXPECT_TRUE(System::listFiles(L"*.*", dir).empty());
  EXPECT_TRUE(System::listFiles(L"*.svj2", dir + L"/missing").empty());
  EXPECT_EQ(System::listFiles(L"*.svj2", dir)[0].size, 1u);
}

TEST(FileAccess, WritesReadsAndAppends) {
  TestSupport::TempDirectory folder;
  const std::wstring path = folder.wide() + L"/ファイル.txt";
  {
    System::File file;
    file.open(path, System::File::Mode::Write);
    file.write(std::string("hello "));
  }
  {
    System::File file;
    file.open(path, System::File::Mode::Append);
    file.write(std::string("world"));
    file.flushToDisk();
  }
  EXPECT_EQ(System::File::readAll(path), "hello world");

  System::File file;
  file.open(path, System::File::Mode::Read);
  EXPECT_EQ(file.size(), 11);
  EXPECT_EQ(file.seek(6, System::File::Origin::Begin), 6);
  char buffer[16] = {};
  EXPECT_EQ(file.readBlock(buffer, sizeof(buffer)), 5u);
  EXPECT_STREQ(buffer, "world");
  EXPECT_EQ(file.read(buffer, sizeof(buffer)), 0u);
}

TEST(FileAccess, OpenFailureNamesTheFile) {
  System::File file;
  try {
    file.open(L"/nonexistent-folder/x.ini", System::File::Mode::Read);
    FAIL() << "expected an exception";
  } catch (const System::NoteException& e) {
    EXPECT_STREQ(e.what(),
                 "failed to open file.\n\n[Note]\n/nonexistent-folder/x.ini\n\n[Place]\nSystem::File::open()");
  }
  EXPECT_FALSE(file.isOpen());
}

// Whole-file reads take only regular files, up to the limit the settings give.
TEST(FileAccess, ReadAllRefusesWhatIsNoRegularFileAndWhatIsTooLarge) {
  TestSupport::TempDirectory folder;
  const std::wstring small = folder.writeFile("small.txt", std::string(16, 'x')).wstring();
  const std::wstring large = folder.writeFile("large.txt", std::string(17, 'x')).wstring();
  const auto failure = [](const std::wstring& path) -> std::string {
    try {
      System::File::readAll(path);
    } catch (const System::NoteException& e) {
      return e.what();
    }
    return "read";
  };
  EXPECT_EQ(failure(L"/dev/zero"), "not a regular file.\n\n[Note]\n/dev/zero\n\n[Place]\nSystem::File::readAll()");
  EXPECT_NE(failure(folder.wide()).find("not a regular file."), std::string::npos);

  System::File::setReadAllLimit(16);
  EXPECT_EQ(failure(small), "read");
  EXPECT_EQ(failure(large), "file is larger than the read limit.\n\n[Note]\n" + System::Text::toUtf8(large) +
                                " (17 bytes; the limit is 16)\n\n[Place]\nSystem::File::readAll()");
  System::File::setReadAllLimit(System::File::kDefaultReadAllLimit);
  EXPECT_EQ(System::File::readAll(large), std::string(17, 'x'));
}

TEST(DataBuffer, KeepsItsMemoryWhileTheCapacitySuffices) {
  System::DataBuffer buffer;
  buffer.allocMemory(100);
  const std::uint8_t* first = buffer.data();
  buffer.allocMemory(40);
  EXPECT_EQ(buffer.data(), first);
  EXPECT_EQ(buffer.size(), 40u);
  EXPECT_EQ(buffer.capacity(), 100u);
  buffer.allocMemory(200);
  EXPECT_EQ(buffer.size(), 200u);
  EXPECT_EQ(buffer.capacity(), 200u);
}

}  // namespace
