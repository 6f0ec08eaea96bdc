// Saving over a file: whole or not at all, on disk before it counts, and what the user
// set on the file (a link in its place, private permissions) stays as it was.
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <filesystem>
#include <iterator>
#include <mutex>
#include <string>
#include <vector>

#include "support/TempDirectory.h"
#include "system/Exception.h"
#include "system/ReplacingFile.h"
#include "system/Text.h"

namespace {

std::mutex flushedMutex;
std::vector<std::filesystem::path> flushedPaths;

std::vector<std::filesystem::path> takeFlushed() {
  std::lock_guard lock(flushedMutex);
  return std::exchange(flushedPaths, {});
}

}  // namespace

// Every fsync of this test program comes here first, so that a test sees what a save
// pushed to disk, files and folders alike; the system call itself follows.
extern "C" int fsync(int descriptor) {
  std::error_code error;
  const auto path = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), error);
  {
    std::lock_guard lock(flushedMutex);
    flushedPaths.push_back(path);
  }
  return static_cast<int>(syscall(SYS_fsync, descriptor));
}

namespace {

void save(const std::filesystem::path& path, const std::string& content) {
  System::ReplacingFile file(path.wstring());
  file.write(content);
  file.commit();
}

TEST(ReplacingFile, ReplacesWholeOrLeavesThePreviousFile) {
  TestSupport::TempDirectory folder;
  const std::wstring path = folder.wide() + L"/project.svj2";
  folder.writeFile("project.svj2", "old content");
  {
    System::ReplacingFile dropped(path);
    dropped.write("half of the new");
  }
  EXPECT_EQ(folder.readFile("project.svj2"), "old content");
  takeFlushed();
  {
    System::ReplacingFile saved(path);
    saved.write("new content");
    EXPECT_EQ(folder.readFile("project.svj2"), "old content");
    saved.commit();
  }
  EXPECT_EQ(folder.readFile("project.svj2"), "new content");
  // Nothing but the target is left in the folder.
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), std::filesystem::directory_iterator()), 1);
  // The content reached the disk before the rename, and the rename after it.
  const auto flushed = takeFlushed();
  ASSERT_EQ(flushed.size(), 2u);
  EXPECT_EQ(flushed[0].extension(), ".saving");
  EXPECT_EQ(flushed[1], folder.path());
}

TEST(ReplacingFile, ALinkStaysALinkAndTheFileBehindItIsReplaced) {
  TestSupport::TempDirectory folder;
  folder.writeFile("real/project.svj2", "old content");
  const auto link = folder.path() / "project.svj2";
  const auto second = folder.path() / "shortcut.svj2";
  std::filesystem::create_symlink("real/project.svj2", link);
  std::filesystem::create_symlink(link, second);
  save(second, "new content");
  EXPECT_TRUE(std::filesystem::is_symlink(second));
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(std::filesystem::read_symlink(link), "real/project.svj2");
  EXPECT_EQ(folder.readFile("real/project.svj2"), "new content");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path() / "real"),
                          std::filesystem::directory_iterator()),
            1);

  // A link to a file not yet made: the save makes the file and keeps the link.
  const auto dangling = folder.path() / "new.svj2";
  std::filesystem::create_symlink("real/new.svj2", dangling);
  save(dangling, "first save");
  EXPECT_TRUE(std::filesystem::is_symlink(dangling));
  EXPECT_EQ(folder.readFile("real/new.svj2"), "first save");
}

TEST(ReplacingFile, TheNewFileTakesTheOldPermissions) {
  using std::filesystem::perms;
  TestSupport::TempDirectory folder;
  for (const perms bits : {perms::owner_read | perms::owner_write,
                           perms::owner_read | perms::owner_write | perms::group_read | perms::others_read}) {
    const auto path = folder.writeFile("project.svj2", "old content");
    std::filesystem::permissions(path, bits);
    save(path, "new content");
    EXPECT_EQ(std::filesystem::status(path).permissions(), bits);
  }
}

TEST(ReplacingFile, AFolderThatIsMissingIsNamedWithTheReason) {
  TestSupport::TempDirectory folder;
  const std::wstring path = folder.wide() + L"/no/such/folder/project.svj2";
  try {
    System::ReplacingFile file(path);
    FAIL() << "expected an exception";
  } catch (const System::NoteException& e) {
    EXPECT_EQ(std::string(e.what()), "failed to open file.\n\n[Note]\n" + System::Text::toUtf8(path) +
                                         " (No such file or directory)\n\n[Place]\nSystem::ReplacingFile::ReplacingFile()");
  }
}

}  // namespace
