#include <gtest/gtest.h>

#include <cerrno>
#include <thread>
#include <vector>

#include "system/Exception.h"
#include "system/Log.h"

namespace {

struct CapturedLine {
  std::string type, place, message;
};

class ExceptionTest : public ::testing::Test {
 protected:
  void SetUp() override {
    System::Log::setHandler([this](const System::Log::Type& type, const char* place, const char* message) {
      lines_.push_back({type.name, place, message});
    });
  }
  void TearDown() override { System::Log::resetHandler(); }
  std::vector<CapturedLine> lines_;
};

TEST_F(ExceptionTest, NoteFormLogsOnceAndKeepsTheDialogText) {
  const System::NoteException plain("Edit::EditService::loadProject", "load failed.");
  EXPECT_STREQ(plain.what(), "load failed.\n\n[Place]\nEdit::EditService::loadProject()");
  const System::NoteException noted("System::File::open", "failed to open file.", std::string("/tmp/a.svj2"));
  EXPECT_STREQ(noted.what(), "failed to open file.\n\n[Note]\n/tmp/a.svj2\n\n[Place]\nSystem::File::open()");
  const System::NoteException wide("Plugin::InputService::open", "unsupported file.", L"%ls (%d)", L"映像.avi", 3);
  EXPECT_STREQ(wide.what(), "unsupported file.\n\n[Note]\n映像.avi (3)\n\n[Place]\nPlugin::InputService::open()");

  ASSERT_EQ(lines_.size(), 3u);
  EXPECT_EQ(lines_[0].type, "ERROR");
  EXPECT_EQ(lines_[0].place, "Exception");
  EXPECT_EQ(lines_[0].message, "load failed. in Edit::EditService::loadProject()");
  EXPECT_EQ(lines_[1].message, "failed to open file. in System::File::open() [/tmp/a.svj2]");
}

TEST_F(ExceptionTest, PlatformCallCarriesTheErrorAsHResult) {
  const System::PlatformCallException e("open", "System::File::open", ENOENT);
  EXPECT_EQ(e.hresult(), 0x80070002u);
  const std::string text = e.what();
  EXPECT_EQ(text.rfind("open() failed.\n\n[Note]\nHRESULT: 0x80070002\nNo such file or directory\n\n[Place]\n"
                       "System::File::open()",
                       0),
            0u)
      << text;
  ASSERT_EQ(lines_.size(), 1u);
  EXPECT_EQ(lines_[0].message,
            "open() failed in System::File::open() [No such file or directory] (HRESULT: 0x80070002)");
}

TEST_F(ExceptionTest, ErrorCodeFormNamesThePlace) {
  const System::ErrorCodeException e("System::DataBuffer::allocMemory", ENOMEM);
  EXPECT_STREQ(e.what(), "Cannot allocate memory\n\n[Place]\nSystem::DataBuffer::allocMemory()");
  EXPECT_EQ(lines_.at(0).message, "Cannot allocate memory in System::DataBuffer::allocMemory()");
}

TEST_F(ExceptionTest, StructuredFaultNamesThePlugin) {
  const System::StructuredException e("func_read_video", "Plugin::InputPlugin::readVideo", 0xC0000005u,
                                      reinterpret_cast<const void*>(0x1234), "libreader.so", "Reader");
  const std::string text = e.what();
  EXPECT_NE(text.find("func_read_video() structured exception\n\n[Note]\nCode: 0xC0000005\n"), std::string::npos);
  EXPECT_NE(text.find("\n\n[Plugin]\nReader"), std::string::npos);
}

TEST_F(ExceptionTest, TravelsBetweenThreadsWithoutSlicing) {
  std::exception_ptr caught;
  std::thread worker([&] {
    try {
      throw System::NoteException("Worker::WorkerThread::processTask", "task failed.");
    } catch (...) {
      caught = std::current_exception();
    }
  });
  worker.join();
  try {
    std::rethrow_exception(caught);
  } catch (const System::NoteException& e) {
    EXPECT_EQ(e.message(), "task failed.");
    return;
  }
  FAIL() << "the exception lost its type";
}

}  // namespace
