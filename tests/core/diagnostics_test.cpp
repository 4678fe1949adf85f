// Error reports, logs and the options of the installation.
#include "core/diagnostics.h"

#include <gmock/gmock.h>

#include "core/options.h"
#include "support/test_host.h"

namespace qrn {
namespace {

using ::testing::HasSubstr;

class Diagnostics : public ::testing::Test {
 protected:
  Diagnostics() { resetDiagnostics(); }
  ~Diagnostics() override { iniOptions() = IniOptions{}; }
  std::string errorLog() { return world.files.files["/appdata/quorin/Err.log"]; }
  test::TestHost world;
};

TEST_F(Diagnostics, anErrorIsLoggedWithWhereItWas) {
  clsError& reporter = errorReporter();
  reporter.ExtraInfo = "slide 3";
  reporter.StoreErrInfo({53, "File not found", "", 0});
  reporter.StoreAppInfo("store", "LoadXY", 120, false);
  reporter.Show();
  EXPECT_EQ(errorLog(),
            "Date: 14-Mar-2026\r\nTime: 09:00:00\r\nNumber: 53\r\nDescription: File not found\r\n"
            "Module: store\r\nProcedure: LoadXY\r\nLine: 120\r\nMessage Supressed: True\r\n"
            "App: quorin-matrix\r\nVersion: " +
                programVersion() + "\r\nLocation: /install\r\nExtra Info: slide 3\r\n" +
                std::string(60, '-') + "\r\n");
  EXPECT_EQ(reporter.ExtraInfo, "");
}

TEST_F(Diagnostics, aShownErrorIsToldInPlainWords) {
  world.expectMsgBox("quorin matrix: An error has occurred: The disk is full");
  EXPECT_FALSE(trapErrors(
      "m", "p", [] { throw HostError(Fault::world, 61, "The disk is full"); }, true));
  EXPECT_THAT(errorLog(), Not(HasSubstr("Supressed")));
  world.expectMsgBox(
      "PowerPoint has encountered an unexpected error.\r\nSave your current work and restart PowerPoint."
      "\r\nDetails: Microsoft PowerPoint went away");
  trapErrors(
      "m", "p", [] { throw std::runtime_error("Microsoft PowerPoint went away"); }, true);
  EXPECT_TRUE(trapErrors(
      "m", "p", [] {}, true));
}

TEST_F(Diagnostics, aLogThatCannotBeWrittenStopsNothing) {
  world.files.failAtWrite = 1;
  world.expectMsgBox("An error has occurred: x");
  EXPECT_FALSE(trapErrors(
      "m", "p", [] { throw std::runtime_error("x"); }, true));
}

TEST_F(Diagnostics, logsAreKeptOnlyWhenAskedFor) {
  writeDebugLog("a", "b", "first");
  writeVoteDataLog("rx", "1;2");
  EXPECT_TRUE(world.files.files.empty());
  iniOptions().logEventsToFile = true;
  writeDebugLog("a", "b", "first");
  world.clock.micros += 61250000;
  writeDebugLog("", "xyVote", "second");
  const std::string module = " | quorin-matrix (" + programVersion() + ") | ";
  EXPECT_EQ(world.files.files["/tmp/t/qrn_debug_2026_03_14.log"],
            "[14/03/26] 09:00:00.000 | 000.000" + module + "0.000 | [a] | [b] | first\r\n" +
                "[14/03/26] 09:01:01.250 | 061.250" + module + "61.250 | [] | [xyVote] | second\r\n");
  writeVoteDataLog("rx", "1;2");
  EXPECT_EQ(world.files.files["/tmp/t/qrn_vote_data_debug_2026_03_14.log"],
            "[14/03/26] 09:01:01.250 | RX|1;2\r\n");
}

TEST_F(Diagnostics, theTimerGoesOnFromTheFirstReading) {
  EXPECT_DOUBLE_EQ(highResolutionTimer(), 9 * 3600.0);
  world.clock.start.hour = 12;  // the clock on the wall is put forward
  world.clock.micros += 500000;
  EXPECT_DOUBLE_EQ(highResolutionTimer(), 9 * 3600.0 + 0.5);
}

TEST_F(Diagnostics, optionsComeFromTheUserThenFromTheInstallation) {
  world.files.files["/appdata/quorin/qrn.ini"] =
      "; comment\r\n[debug]\r\nLOGEVENTS TO FILE = 1\r\nshow all errors=0\r\n[Other]\r\nDISABLE PARTICIPANT "
      "LIST=1\r\n";
  world.files.files["/allusers/quorin/qrn.ini"] =
      "[DEBUG]\nLOGEVENTS TO FILE=0\nSHOW ALL ERRORS=1\nDISABLE DISABLING PPT WINDOWS=-1\n"
      "[QUORIN OPTIONS]\nCHART EXPORT FORMAT=\"JPG\"\n[VOLTRAND OPTIONS]\nDEBUG ACCEPT DETECT AS VOTES=yes";
  ReadGlobalSettingsFromINIFile();
  EXPECT_TRUE(iniOptions().logEventsToFile);
  EXPECT_FALSE(iniOptions().showAllErrors);
  EXPECT_TRUE(iniOptions().disableDisablingPptWindows);
  EXPECT_FALSE(iniOptions().disableParticipantList);
  EXPECT_FALSE(iniOptions().debugAcceptDetectAsVotes);
  EXPECT_EQ(iniOptions().chartExportFormat, "JPG");
  world.files.files.clear();
  ReadGlobalSettingsFromINIFile();
  EXPECT_FALSE(iniOptions().logEventsToFile);
  EXPECT_EQ(iniOptions().chartExportFormat, "EMF");
}

}  // namespace
}  // namespace qrn
