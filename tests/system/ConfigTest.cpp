#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/TempDirectory.h"
#include "system/ConfigGroup.h"
#include "system/FileName.h"
#include "system/IniFile.h"
#include "system/Log.h"
#include "system/MainIniFile.h"
#include "system/Singleton.h"

namespace {

using System::IniFile;

// What a service looks like from the group's side: members bound to keys in its
// constructor, stored back by the group as it goes.
struct Service {
  explicit Service(IniFile* ini) {
    config.setSection("Svc");
    config.add<System::Config::Int>("Count", &count, 3);
    config.add<System::Config::Float>("Scale", &scale, 1.5f);
    config.add<System::Config::String>("Name", &name, L"default");
    config.add<System::Config::Int>("Flag", &flag, -1);
    config.load(ini);
  }
  std::int32_t count = 0;
  float scale = 0.0f;
  std::wstring name;
  std::int32_t flag = 0;
  System::Config::Group config;
};

std::vector<std::string> keysOf(const IniFile::SectionRef& section) {
  std::vector<std::string> keys;
  for (const auto& entry : section) keys.push_back(entry.key);
  return keys;
}

TEST(ConfigGroup, LoadTakesValuesAndSilentlyFallsBackToDefaults) {
  IniFile ini;
  ini.loadMemory("[Svc]\nCount=12\nScale=abc\nName=\xe5\x90\x8d\xe5\x89\x8d\n");
  std::vector<std::string> logged;
  System::Log::setHandler([&](const System::Log::Type&, const char*, const char* message) {
    logged.emplace_back(message);
  });
  {
    Service service(&ini);
    EXPECT_EQ(service.count, 12);
    EXPECT_EQ(service.scale, 1.5f);
    EXPECT_EQ(service.name, L"名前");
    EXPECT_EQ(service.flag, -1);
  }
  System::Log::resetHandler();
  EXPECT_TRUE(logged.empty());
}

TEST(ConfigGroup, StoreAppendsMissingKeysInDeclarationOrder) {
  IniFile ini;
  ini.loadMemory("[Svc]\nFlag=1\nScale=x\n");
  {
    Service service(&ini);
    service.count = 7;
    service.name.clear();
  }
  const IniFile::SectionRef section = ini.section("Svc");
  EXPECT_EQ(keysOf(section), (std::vector<std::string>{"Flag", "Scale", "Count", "Name"}));
  EXPECT_EQ(section["Flag"].text, "1");
  EXPECT_EQ(section["Scale"].text, "1.500000");
  EXPECT_EQ(section["Count"].text, "7");
  EXPECT_EQ(section["Name"].text, "");
  // An empty string is a value like any other and comes back as itself.
  Service again(&ini);
  EXPECT_EQ(again.name, L"");
}

TEST(ConfigGroup, MissingSectionOrIniGivesEveryDefault) {
  IniFile ini;
  {
    Service withoutSection(&ini);
    EXPECT_EQ(withoutSection.scale, 1.5f);
    EXPECT_EQ(withoutSection.name, L"default");
    Service withoutIni(nullptr);
    EXPECT_EQ(withoutIni.count, 3);
  }
  EXPECT_EQ(ini.section("Svc").size(), 4u);
}

TEST(MainIniFile, IsReadAtFirstAcquireAndWrittenAtLastRelease) {
  TestSupport::TempDirectory install;
  install.writeFile("data/sorvel2.ini", "[Svc]\nCount=4\nScale=0.25\n[Other]\nkept=yes\n");
  System::FileName::initializeVariableList(install.wide());
  {
    System::SingletonRef<System::MainIniFile> first;
    {
      System::SingletonRef<System::MainIniFile> second;
      Service service(System::MainIniFile::get());
      EXPECT_EQ(service.count, 4);
      EXPECT_EQ(service.scale, 0.25f);
      service.scale = 2.0f;
    }
    EXPECT_EQ(install.readFile("data/sorvel2.ini"), "[Svc]\nCount=4\nScale=0.25\n[Other]\nkept=yes\n");
  }
  EXPECT_EQ(System::MainIniFile::get(), nullptr);
  // Keys of sections that nobody declares survive; the file is written once, at the end.
  EXPECT_EQ(install.readFile("data/sorvel2.ini"),
            "[Svc]\r\nCount=4\r\nScale=2.000000\r\nName=default\r\nFlag=-1\r\n[Other]\r\nkept=yes\r\n");
}

}  // namespace
