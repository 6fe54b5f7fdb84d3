// The Kenwood and Elecraft read rules over a scripted radio on a fake clock: which replies are
// skipped, what costs an attempt, what ends a read at once, and the waits between attempts.
#include "radio/kenwood/kenwood_transaction.h"

#include <gtest/gtest.h>

#include <memory>

#include "radio/kenwood/kenwood_codec.h"
#include "support/fake_clock.h"
#include "support/scripted_device.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;
using testing::FakeClock;
using testing::ScriptedDevice;

// A link at 9600 bit/s with the default time-outs: each byte may take up to 500 ms.
struct ScriptedLink {
  explicit ScriptedLink(int family) {
    auto device = std::make_unique<ScriptedDevice>(clock);
    scripted = device.get();
    std::string message;
    EXPECT_TRUE(link.Attach(std::move(device),
                            FamilyLineSettings(family, "9600", false, false, false, 500), &message))
        << message;
    purgesAtStart = scripted->purges();
  }
  int PurgesSinceStart() const { return scripted->purges() - purgesAtStart; }

  FakeClock clock;
  RadioLink link{clock};
  std::atomic<bool> abort{false};
  KenwoodTransaction transaction{link, clock, abort};
  ScriptedDevice* scripted = nullptr;
  int purgesAtStart = 0;
};

TEST(KenwoodReadTest, FollowsTheKenwoodRules) {
  struct ReadCase {
    const char* name;
    std::string command;
    std::vector<std::string> replies;  // one per write of the command; "" = silence
    std::string value;
    size_t writes;
  };
  const std::string ten = "FA0001407000;";
  const std::string five = ten + ten + ten + ten + ten;
  const std::string good = "FA00014070000;";
  const std::string status = "IF00014070000     +00000000002000000 ;";
  const std::string fourBad = ten + "FA0001407000X;" + status + ten;
  ReadCase cases[] = {
      {"unasked status first", "FA", {status + good}, "00014070000", 1},
      {"ten digits five times fail the attempt", "FA", {five, good}, "00014070000", 2},
      {"ten digits on every attempt", "FA", {five, five, five}, "", 3},
      {"four bad replies then the answer", "FA", {fourBad + good}, "00014070000", 1},
      {"refusal of a frequency read is skipped", "FA", {"?;" + good}, "00014070000", 1},
      {"so is one after the letters", "FB", {"FB?;FB00007074000;"}, "00007074000", 1},
      {"refusal ends other reads at once", "MD", {"?;", "MD2;"}, "", 1},
      {"refusal after the letters ends it too", "MD", {"MD?;", "MD2;"}, "", 1},
      {"E costs an attempt", "MD", {"E;", "MD2;"}, "2", 2},
      {"O after the letters is skipped", "MD", {"MDO;MD2;"}, "2", 1},
      {"O costs an attempt", "MD", {"O;", "MD2;"}, "2", 2},
      {"E, before or after the letters, is skipped", "MD", {"E;MDE;MD3;"}, "3", 1},
      {"silence on every attempt", "MD", {"", "", ""}, "", 3},
      {"unterminated fragment", "MD", {"MD2", "MD2;"}, "2", 2},
      {"sub receiver's meter skipped; terminated command", "SM0;", {"SM10005;SM00007;"}, "0007", 1},
      {"value with parameters", "MR0001", {"MR0001000100028450000;"}, "000100028450000", 1},
  };
  for (const ReadCase& c : cases) {
    SCOPED_TRACE(c.name);
    ScriptedLink s(kKenwood);
    const std::string sent = kenwood::TerminatedCommand(c.command);
    for (const std::string& reply : c.replies) {
      s.scripted->OnWrite(sent, reply);
    }
    EXPECT_EQ(s.transaction.KenwoodRead(c.command), c.value);
    EXPECT_EQ(s.scripted->writes().size(), c.writes);
    EXPECT_TRUE(s.scripted->unexpected().empty());
  }
}

TEST(KenwoodReadTest, PurgesBetweenAttemptsAndNeverWaitsOutACompleteReply) {
  ScriptedLink quick(kKenwood);
  quick.scripted->OnWrite("FA;", "FA00014070000;", milliseconds(120));
  EXPECT_EQ(quick.transaction.KenwoodRead("FA"), "00014070000");
  EXPECT_EQ(quick.clock.elapsed(), milliseconds(120));
  EXPECT_EQ(quick.PurgesSinceStart(), 0);

  ScriptedLink silent(kKenwood);
  silent.scripted->SetResponder([](const std::string&) { return std::string(); });
  EXPECT_EQ(silent.transaction.KenwoodRead("MD"), "");
  EXPECT_EQ(silent.PurgesSinceStart(), 3);
  // Three attempts, each ending after one byte time-out (250 + 250 ms).
  EXPECT_EQ(silent.clock.elapsed(), milliseconds(1500));
}

TEST(KenwoodReadTest, AbortOrAVanishedPortEndsTheReadAtOnce) {
  ScriptedLink aborted(kKenwood);
  aborted.scripted->SetResponder([](const std::string&) { return std::string(); });
  aborted.abort = true;  // checked between attempts
  EXPECT_EQ(aborted.transaction.KenwoodRead("FA"), "");
  EXPECT_EQ(aborted.scripted->writes().size(), 1u);

  ScriptedLink vanished(kKenwood);
  vanished.scripted->Vanish();
  EXPECT_EQ(vanished.transaction.KenwoodRead("FA"), "");
  EXPECT_TRUE(vanished.link.lost());
  EXPECT_EQ(vanished.clock.elapsed(), milliseconds(0));
}

TEST(ElecraftReadTest, RetriesFiveTimesWithWaitsFromTheThird) {
  struct Case {
    const char* name;
    std::vector<std::string> replies;
    std::string value;
    size_t writes;
    size_t waits;  // 200 ms waits before attempts 3, 4 and 5
  } cases[] = {
      {"answer", {"BG07;"}, "07", 1, 0},
      {"refused twice", {"?;", "?;", "BG07;"}, "07", 3, 1},
      {"refused after the letters", {"BG?;", "BG15;"}, "15", 2, 0},
      {"refused every time", {"?;", "?;", "?;", "?;", "?;"}, "", 5, 3},
      {"silent", {"", "", "", "", ""}, "", 5, 3},
      {"other command's reply costs an attempt", {"FA00014070000;", "BG03;"}, "03", 2, 0},
      {"junk before the reply costs an attempt",
       {"\x7f\x1b"
        "BG03;",
        "BG04;"},
       "04",
       2,
       0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    ScriptedLink s(kElecraft);
    for (const std::string& reply : c.replies) {
      s.scripted->OnWrite("BG;", reply);
    }
    EXPECT_EQ(s.transaction.ElecraftRead("BG"), c.value);
    EXPECT_EQ(s.scripted->writes().size(), c.writes);
    EXPECT_EQ(s.clock.sleeps(), std::vector<milliseconds>(c.waits, milliseconds(200)));
    EXPECT_EQ(s.PurgesSinceStart(), static_cast<int>(c.writes) - (c.value.empty() ? 0 : 1));
  }
}

}  // namespace
}  // namespace tavlorin
