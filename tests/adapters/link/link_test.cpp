#include <signal.h>

#include <cstdlib>
#include <filesystem>

#include "adapters/link/link_fixture.h"

namespace qrn::test {
namespace {

class RealController : public LinkTest {
 protected:
  RealController() { options.controllerPath = QUORIN_CONTROLLER; }

  std::map<int, std::string> rehearsedVote(link::WebSocketLink& of) {
    received.clear();
    startVote(of, 5);
    EXPECT_TRUE(pump(of, [&] { return votesReceived().size() == 20; }));
    of.sendToController("EndVote");
    return votesReceived();
  }
};

bool alive(long process) {
  return kill(static_cast<pid_t>(process), 0) == 0;
}

TEST_F(RealController, StartsAnswersVotesAndEndsWithTheLink) {
  options.rehearse = 20;
  options.seed = 7;
  long process = 0;
  {
    link::WebSocketLink link(options);
    listen(link);
    ASSERT_FALSE(link.makeLink(false));
    ASSERT_TRUE(link.makeLink(true)) << link.lastError();
    EXPECT_TRUE(link.controllerReady());
    process = link.controllerProcess();
    EXPECT_TRUE(alive(process));

    link.sendToController("BaseInfo");
    ASSERT_TRUE(pump(link, [&] { return !received.empty(); }));
    for (const char* line :
         {"BASETYPE=REHEARSAL\r\n", "KEYPADSNOTVOTEDHI=20\r\n", "KEYPADSNOTVOTEDCLOSE=1\r\n",
          "KEYPADSNOTVOTEDCLOSEPERCENT=100\r\n", "OFFSET=0,0,1,20,False\r\n"})
      EXPECT_NE(received[0].find(line), std::string::npos) << received[0];
    EXPECT_EQ(rehearsedVote(link).size(), 20U);
  }
  EXPECT_FALSE(alive(process));
}

TEST(AnnounceFolder, GivesWayWhereSomebodyElseHasTakenTheName) {
  const Folder home;
  const std::string& runtime = home.path();
  std::filesystem::create_directory(runtime + "/quorin");  // others may enter it
  const char* before = std::getenv("XDG_RUNTIME_DIR");
  const std::string kept = before != nullptr ? before : "";
  setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
  const std::string folder = link::defaultAnnounceFolder();
  kept.empty() ? unsetenv("XDG_RUNTIME_DIR") : setenv("XDG_RUNTIME_DIR", kept.c_str(), 1);
  EXPECT_NE(folder, "");
  EXPECT_NE(folder, runtime + "/quorin");
}

TEST_F(RealController, AKilledControllerIsReportedOnceAndReplacedByOneOfTheSameSeed) {
  options.rehearse = 20;
  options.seed = 11;
  Linked link(*this, true);
  const long former = link.controllerProcess();
  const auto cast = rehearsedVote(link);
  ASSERT_EQ(kill(static_cast<pid_t>(former), SIGKILL), 0);
  ASSERT_TRUE(pump(link, [&] { return losses == 1; }));
  EXPECT_FALSE(link.linked());
  link.sendToController("BaseInfo");  // goes nowhere, and does no harm
  for (int i = 0; i < 20; ++i) link.drain();
  EXPECT_EQ(losses, 1);

  ASSERT_FALSE(link.makeLink(false)) << "the dead controller's announcement is still there";
  ASSERT_TRUE(link.makeLink(true)) << link.lastError();
  EXPECT_NE(link.controllerProcess(), former);
  EXPECT_EQ(rehearsedVote(link), cast);
  EXPECT_EQ(losses, 1);
}

}  // namespace
}  // namespace qrn::test
