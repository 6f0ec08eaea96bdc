// The input service over readers made in the test: ranking and extension maps, the
// order in which candidates are tried and what each failure says, track names, and the
// cache of open files.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "plugin/InputFile.h"
#include "plugin/InputPlugin.h"
#include "plugin/InputService.h"
#include "system/Exception.h"
#include "system/IniFile.h"

namespace {

using Plugin::InputFile;
using Plugin::InputPlugin;
using Plugin::InputService;
using Plugin::MediaKind;

// A reader that takes the names its test gives it, with the flags and frames given.
class FakeReader : public InputPlugin {
 public:
  FakeReader(std::wstring name, std::vector<std::wstring> filter, std::uint32_t kinds)
      : InputPlugin(std::move(name), std::move(filter), L"", kinds) {}

  std::shared_ptr<InputFile> open(const std::wstring& fileName, std::uint32_t trackIndex) override {
    opened.push_back(fileName + L"#" + std::to_wstring(trackIndex));
    const auto found = files.find(fileName);
    if (found == files.end()) return nullptr;
    auto file = std::make_shared<InputFile>();
    file->flags = found->second.first;
    file->frameCount = found->second.second;
    return file;
  }

  std::map<std::wstring, std::pair<std::uint32_t, std::int32_t>> files;  // name -> flags, frames
  std::vector<std::wstring> opened;
};

struct Readers {
  std::shared_ptr<FakeReader> bitmap =
      std::make_shared<FakeReader>(L"Bitmap", std::vector<std::wstring>{L"BmpFile (*.bmp)", L"*.bmp", L"TgaFile", L"*.TGA"}, 9);
  std::shared_ptr<FakeReader> library = std::make_shared<FakeReader>(
      L"Library", std::vector<std::wstring>{L"Images", L"*.png;*.bmp;*.*;x.gif", L"", L"*.jpg"}, 9);
  std::shared_ptr<FakeReader> movie =
      std::make_shared<FakeReader>(L"Movie", std::vector<std::wstring>{L"AviFile (*.avi)", L"*.avi"}, 3);
  std::shared_ptr<FakeReader> sound =
      std::make_shared<FakeReader>(L"Sound", std::vector<std::wstring>{L"WavFile (*.wav)", L"*.wav"}, 2);
};

class InputServiceTest : public ::testing::Test {
 protected:
  void make(std::int32_t fileHandleMax = 20) {
    ini_.value("Input", "FileHandleMax").setInt(fileHandleMax);
    service_ = std::make_unique<InputService>(&ini_);
    for (const auto& reader : {readers_.bitmap, readers_.library, readers_.movie, readers_.sound}) {
      service_->registerPlugin(reader);
    }
    service_->updateExtTypeList();
  }

  static std::string failure(const std::function<void()>& work) {
    try {
      work();
    } catch (const System::NoteException& e) {
      return e.message();
    }
    return "";
  }

  System::IniFile ini_;
  Readers readers_;
  std::unique_ptr<InputService> service_;
};

TEST_F(InputServiceTest, ExtensionsComeFromTheFilterOrTheUsersList) {
  make();
  // Only "*." patterns count, lower-cased; "*.*" names nothing; an empty entry ends it.
  EXPECT_EQ(readers_.bitmap->getExtList(), (std::vector<std::wstring>{L"bmp", L"tga"}));
  EXPECT_EQ(readers_.library->getExtList(), (std::vector<std::wstring>{L"png", L"bmp"}));
  EXPECT_EQ(service_->candidates(L"bmp", InputPlugin::Video),
            (std::vector<InputPlugin*>{readers_.bitmap.get(), readers_.library.get()}));
  EXPECT_TRUE(service_->candidates(L"wav", InputPlugin::Video).empty());

  const std::wstring video = service_->getVideoFilter();
  EXPECT_EQ(video, std::wstring(L"VideoFile (*.bmp;*.tga;*.png;*.avi)\0*.bmp;*.tga;*.png;*.avi\0", 60));

  readers_.movie->setExtList(L"avi");
  EXPECT_EQ(readers_.movie->extOverride(), L"");  // equal to the default: nothing stored
  readers_.movie->setExtList(L"mkv,webm");
  EXPECT_EQ(readers_.movie->extOverride(), L"mkv,webm");
  service_->updateExtTypeList();
  EXPECT_TRUE(service_->candidates(L"avi", InputPlugin::Video).empty());
  EXPECT_EQ(service_->candidates(L"webm", InputPlugin::Audio), (std::vector<InputPlugin*>{readers_.movie.get()}));
}

TEST_F(InputServiceTest, StoredPrioritiesRankTheReaders) {
  ini_.value("Input.Library", "priority").setInt(-1);
  make();
  EXPECT_EQ(readers_.library->defaultPriority(), 1);
  EXPECT_EQ(service_->plugins().front().get(), readers_.library.get());
  EXPECT_EQ(service_->candidates(L"bmp", InputPlugin::Video).front(), readers_.library.get());
}

// Candidates are tried in order; the one that takes the file stands in its plugin field.
// What refuses a kind does not hand the file to the next candidate.
TEST_F(InputServiceTest, OpenTriesCandidatesAndSaysWhyItFailed) {
  make();
  readers_.library->files[L"/m/Photo.BMP"] = {1, 1};
  const auto photo = service_->openFile(L"/m/Photo.BMP", MediaKind::Video);
  EXPECT_EQ(photo->plugin, readers_.library.get());
  EXPECT_EQ(readers_.bitmap->opened, (std::vector<std::wstring>{L"/m/Photo.BMP#0"}));

  readers_.movie->files[L"clip.avi"] = {1, 30};
  const auto track = service_->openFile(L":9clip.avi", MediaKind::Video);
  EXPECT_EQ(readers_.movie->opened.back(), L"clip.avi#9");

  EXPECT_EQ(failure([&] { service_->openFile(L"/m.avi/noextension", MediaKind::Video); }), "not supported file.");
  EXPECT_EQ(failure([&] { service_->openFile(L"missing.avi", MediaKind::Video); }), "can not open file.");
  EXPECT_EQ(failure([&] { service_->openFile(L"clip.avi", MediaKind::Audio); }), "file is no audio.");
  EXPECT_EQ(failure([&] { service_->openFile(L":cclip.avi", MediaKind::Video); }), "invalid track index.");
  EXPECT_EQ(failure([&] { service_->openFile(L":", MediaKind::Video); }), "invalid track index.");
}

TEST_F(InputServiceTest, TrackNamesRunFromDigitsOnToB) {
  EXPECT_EQ(InputService::MakeMultiTrackFileName(L"a.avi", 0), L"a.avi");
  EXPECT_EQ(InputService::MakeMultiTrackFileName(L"a.avi", 1), L":1a.avi");
  EXPECT_EQ(InputService::MakeMultiTrackFileName(L"a.avi", 10), L"::a.avi");
  EXPECT_EQ(InputService::MakeMultiTrackFileName(L"a.avi", 50), L":ba.avi");
  EXPECT_THROW(InputService::MakeMultiTrackFileName(L"a.avi", 51), System::NoteException);
}

// Movies stay open and are handed out again; the least recently used goes first when
// the cache is full; still images are read anew each time; a failure is an empty file.
TEST_F(InputServiceTest, CacheKeepsRecentMoviesButNotStills) {
  make(1);
  readers_.movie->files[L"a.avi"] = {3, 10};
  readers_.movie->files[L"b.avi"] = {1, 10};
  readers_.bitmap->files[L"still.bmp"] = {1, 1};
  const auto a = service_->openCachedFile(L"a.avi", MediaKind::Video);
  EXPECT_EQ(service_->openCachedFile(L"a.avi", MediaKind::Audio), a);
  EXPECT_EQ(readers_.movie->opened.size(), 1u);
  const auto b = service_->openCachedFile(L"b.avi", MediaKind::Video);
  EXPECT_EQ(service_->openCachedFile(L"b.avi", MediaKind::Audio), nullptr);  // cached, but has no sound
  EXPECT_EQ(b, service_->openCachedFile(L"b.avi", MediaKind::Video));
  EXPECT_NE(service_->openCachedFile(L"a.avi", MediaKind::Video), a);  // evicted by b, opened again
  EXPECT_EQ(readers_.movie->opened.size(), 3u);

  const std::uint32_t generation = InputService::fileGeneration();
  EXPECT_NE(service_->openCachedFile(L"still.bmp", MediaKind::Video),
            service_->openCachedFile(L"still.bmp", MediaKind::Video));
  EXPECT_EQ(service_->openCachedFile(L"gone.avi", MediaKind::Video), nullptr);
  EXPECT_EQ(service_->openCachedFile(L"", MediaKind::Video), nullptr);
  EXPECT_EQ(service_->openAnyFile(L"a.avi")->flags, 3u);
  service_->closeAllFiles();
  EXPECT_NE(InputService::fileGeneration(), generation);
}

}  // namespace
