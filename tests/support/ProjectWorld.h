// A session with the real catalogue, template and databases, and an amplifier on a line in process.
// Link project, simulator and what DataWorld.h asks for.
#pragma once

#include <memory>
#include <string>

#include "platform/Rx900Utils.h"
#include "project/SessionState.h"
#include "simulator/InProcessPort.h"
#include "simulator/SimulatedLine.h"
#include "support/DataWorld.h"

namespace velmoor {

class TestSession final : public SessionState {
 public:
  explicit TestSession(SerialPort& comm) : SessionState(comm) { gMainForm = this; }
  ~TestSession() override {
    ReleaseObjects();
    gMainForm = nullptr;
  }

  void Start() {
    StartHelix7();
    ASSERT_TRUE(BuildDatabase("400"));
    SetDBAndTables();
    GetComboLists();
    GetAlarmDefinitions();
  }
  // Opens the project; empty when it opened, else the reason.
  std::string Open(const std::string& path, NewerProject newer = NewerProject::refuse) {
    clsProject.reset();
    clsProject = std::make_unique<clsHX7Project>();
    clsProject->SetWorkingDirectory(GetFileDirectory(path));
    std::string strError;
    const bool opened = clsProject->OpenProject(path, GetFileTitle(path), strError, newer);
    EXPECT_EQ(opened, strError.empty()) << strError;
    return strError;
  }
  void Close() { clsProject.reset(); }
  void GoOnline() {
    ASSERT_EQ(clsHelix7->GoOnline(true), kSuccess);
    blnIsOnline = true;
  }
  clsHX7Project& project() { return *clsProject; }
  void SetTHDatabasePath(const std::string& path) { strTHDatabasePath = path; }
};

class ProjectWorld : public ::testing::Test {
 protected:
  ProjectWorld() : port(line), session(port) {
    world.world.rx900Utils = &rx900Utils;
    line.AddAmplifier({});
    session.Start();
  }

  SimulatedAmplifier& amplifier() { return *line.Amplifier('0'); }
  std::string OpenNew(const std::string& name) {
    std::string path = world.MakeProject(name);
    EXPECT_EQ(session.Open(path), "");
    return path;
  }
  clsHX7Project& project() { return session.project(); }

  StandardRx900Utils rx900Utils;
  DataWorld world;
  SimulatedLine line;
  InProcessPort port;
  TestSession session;
};

}  // namespace velmoor
