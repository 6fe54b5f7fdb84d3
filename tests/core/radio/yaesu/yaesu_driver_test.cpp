// The Yaesu operations over a scripted byte stream on a fake clock.
#include "radio/yaesu/yaesu_driver.h"

#include <gtest/gtest.h>

#include "link/line_settings.h"
#include "radio/cat_radio.h"
#include "shell/debug_log.h"
#include "support/fake_clock.h"
#include "support/hex_bytes.h"
#include "support/scripted_device.h"

namespace tavlorin {
namespace {

using std::chrono::milliseconds;
using testing::HexBytes;
using testing::ScriptedDevice;
using testing::ToHex;

class YaesuDriverTest : public ::testing::Test {
 protected:
  void SetUp() override {
    DebugLog::SetObserver([this](const std::string& line) { log_.push_back(line); });
  }
  void TearDown() override { DebugLog::SetObserver(nullptr); }

  void Attach(const std::string& model) {
    auto device = std::make_unique<ScriptedDevice>(clock_);
    device_ = device.get();
    std::string message;
    ASSERT_TRUE(radio_.link().Attach(std::move(device),
                                     FamilyLineSettings(kYaesu, "38400", false, false, false, 500),
                                     &message));
    radio_.manufacturer = kYaesu;
    radio_.modelName = model;
  }
  void Expect(const char* sent, const char* reply) {
    device_->OnWrite(HexBytes(sent), HexBytes(reply));
  }
  std::vector<std::string> Written() const {
    std::vector<std::string> out;
    for (const std::string& w : device_->writes()) {
      out.push_back(ToHex(w));
    }
    return out;
  }
  bool Logged(const std::string& line) const {
    return std::find(log_.begin(), log_.end(), line) != log_.end();
  }

  testing::FakeClock clock_;
  CatRadio radio_{clock_};
  ScriptedDevice* device_ = nullptr;
  std::vector<std::string> log_;
};

struct SetFrequencyCase {
  const char* model;
  bool satellite;
  int vfo;
  Frequency hz;
  const char* command;
  bool readsResult;
};

TEST_F(YaesuDriverTest, SetFrequencyByteOrderOpcodeAndResultByte) {
  const SetFrequencyCase cases[] = {
      {"FT-990", false, 0, 14070000, "00 70 40 01 0A", false},
      {"FT-817", false, 0, 14070000, "01 40 70 00 01", true},
      {"FT-857", false, 0, 14070000, "01 40 70 00 01", true},  // borrows the FT-817's set
      {"FT-847", true, 1, 435800000, "43 58 00 00 21", false},
      {"FT-847", true, 0, 145990000, "14 59 90 00 11", false},
      {"FT-847", false, 1, 145990000, "14 59 90 00 11", false},
      {"FT-847", false, 0, 14070000, "01 40 70 00 01", false},
      {"FT-1000MP MkV", false, 1, 7060000, "00 60 70 00 8A", false},
      {"FT-1000D", false, 0, 7060000, "00 60 70 00 0A", false},
      {"FT-100", false, 0, 50125000, "00 25 01 05 0A", false},
      {"FT-920", false, 1, 3700000, "00 00 37 00 0A", false},
  };
  for (const SetFrequencyCase& c : cases) {
    SCOPED_TRACE(std::string(c.model) + " " + c.command);
    Attach(c.model);
    radio_.yaesu().SetSatelliteMode(c.satellite);
    const auto before = clock_.elapsed();
    EXPECT_EQ(radio_.SetFrequency(c.vfo, c.hz), 1);
    EXPECT_EQ(Written(), std::vector<std::string>{c.command});
    // A result byte is waited for (silence here: the read's time-out) only where it is due.
    EXPECT_EQ(clock_.elapsed() > before, c.readsResult);
  }
}

std::string Update(size_t length, std::initializer_list<std::pair<size_t, uint8_t>> bytes) {
  std::string u(length, '\0');
  for (auto [i, b] : bytes) {
    u[i] = static_cast<char>(b);
  }
  return u;
}

struct StatusCase {
  const char* model;
  int vfo;
  const char* flagsCommand;
  std::string flags;
  const char* updateCommand;
  std::string update;
  Frequency hz;
};

TEST_F(YaesuDriverTest, FrequencyDecodingPerModel) {
  const StatusCase cases[] = {
      // FT-100: bytes 1-4 big-endian x 1.25: 00 00 00 08 is 10 Hz
      {"FT-100", 0, "00 00 00 01 FA", std::string(8, '\0'), "00 00 00 00 10",
       Update(32, {{4, 0x08}}), 10},
      // FT-1000MP MkV: (v >> 4) x 10, VFO B at 17-20
      {"FT-1000MP MkV", 0, "00 00 00 01 FA", std::string(6, '\0'), "00 00 00 03 10",
       Update(32, {{1, 0x01}, {2, 0x57}, {3, 0x81}, {4, 0x80}}), 14070000},
      {"FT-1000MP MkV", 1, "00 00 00 01 FA", std::string(6, '\0'), "00 00 00 03 10",
       Update(32, {{18, 0xAC}, {19, 0x5D}, {20, 0x00}}), 7060000},
      // FT-920: hertz; flag 0x10 picks the second record
      {"FT-920", 0, "00 00 00 00 FA", std::string(8, '\0'), "00 00 00 03 10",
       Update(28, {{2, 0xD6}, {3, 0xB0}, {4, 0xF0}, {16, 0x6B}, {17, 0xBA}, {18, 0x20}}), 14070000},
      {"FT-920", 0, "00 00 00 00 FA", Update(8, {{0, 0x10}}), "00 00 00 03 10",
       Update(28, {{2, 0xD6}, {3, 0xB0}, {4, 0xF0}, {16, 0x6B}, {17, 0xBA}, {18, 0x20}}), 7060000},
      // FT-990: 24-bit x 10; flag 0x02 picks VFO B at 17-19
      {"FT-990", 0, "00 00 00 00 FA", std::string(5, '\0'), "00 00 00 03 10",
       Update(32, {{1, 0x15}, {2, 0x78}, {3, 0x18}}), 14070000},
      {"FT-990", 0, "00 00 00 00 FA", Update(5, {{0, 0x02}}), "00 00 00 03 10",
       Update(32, {{1, 0x15}, {2, 0x78}, {3, 0x18}, {17, 0x0A}, {18, 0xC5}, {19, 0xD0}}), 7060000},
      // FT-1000D: five flag bytes; VFO B at 17-19
      {"FT-1000D", 1, "00 00 00 01 FA", std::string(5, '\0'), "00 00 00 03 10",
       Update(32, {{17, 0x0A}, {18, 0xC5}, {19, 0xD0}}), 7060000},
      // FT-900: two 9-byte records; flag 0x40 = VFO B in use
      {"FT-900", 0, "00 00 00 00 FA", std::string(5, '\0'), "00 00 00 03 10",
       Update(18, {{1, 0x15}, {2, 0x78}, {3, 0x18}, {10, 0x0A}, {11, 0xC5}, {12, 0xD0}}), 14070000},
      {"FT-600", 0, "00 00 00 00 FA", Update(5, {{0, 0x40}}), "00 00 00 03 10",
       Update(18, {{1, 0x15}, {2, 0x78}, {3, 0x18}, {10, 0x0A}, {11, 0xC5}, {12, 0xD0}}), 7060000},
  };
  for (const StatusCase& c : cases) {
    SCOPED_TRACE(std::string(c.model) + " " + std::to_string(c.hz));
    Attach(c.model);
    device_->OnWrite(HexBytes(c.flagsCommand), c.flags);
    device_->OnWrite(HexBytes(c.updateCommand), c.update);
    Frequency hz = 0;
    EXPECT_EQ(radio_.ReadFrequency(c.vfo, &hz), 1u);
    EXPECT_EQ(hz, c.hz);
    EXPECT_EQ(device_->pendingExpectations(), 0u);
  }
}

TEST_F(YaesuDriverTest, FrequencyAndModeSlots) {
  struct Case {
    const char* model;
    bool satellite;
    int vfo;
    const char* command;  // "" = nothing is read
  } cases[] = {
      {"FT-847", false, 0, "00 00 00 00 03"},  {"FT-847", false, 1, ""},
      {"FT-847", true, 0, "00 00 00 00 13"},   {"FT-847", true, 1, "00 00 00 00 23"},
      {"FT-817", false, 0, "00 00 00 00 03"},  {"FT-897", false, 0, "00 00 00 00 03"},
      {"FT-2000", false, 2, "00 00 00 00 23"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.model) + " " + std::to_string(c.vfo));
    Attach(c.model);
    radio_.yaesu().SetSatelliteMode(c.satellite);
    device_->SetResponder([](const std::string&) { return HexBytes("43 58 00 00 08"); });
    Frequency hz = 1;
    radio_.ReadFrequency(c.vfo, &hz);
    if (*c.command == '\0') {
      EXPECT_TRUE(device_->writes().empty());
      EXPECT_EQ(hz, 0u);
    } else {
      EXPECT_EQ(Written(), std::vector<std::string>{c.command});
      EXPECT_EQ(hz, 435800000u);
    }
    if (c.satellite && c.vfo == 0) {
      EXPECT_EQ(radio_.yaesu().satelliteFrequency(), 435800000u);  // the FT-847 keeps it
    }
  }
}

TEST_F(YaesuDriverTest, ShortReplyCountsAsSuccessWithZeros) {
  Attach("FT-817");
  Expect("00 00 00 00 03", "01 40 70");
  Frequency hz = 0;
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 1u);
  EXPECT_EQ(hz, 14070000u);
  Expect("00 00 00 00 03", "01 40 70");
  EXPECT_EQ(radio_.ReadMode(), 0x00);  // the missing mode byte reads as zero
}

TEST_F(YaesuDriverTest, FailureLines) {
  Attach("FT-817");
  Frequency hz = 5;
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 0u);
  EXPECT_EQ(hz, 0u);
  EXPECT_TRUE(Logged("YaesuRead error: 0 / 5 bytes read (Read frequency and mode)"));
  device_->Vanish();
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 0u);
  EXPECT_TRUE(Logged("YaesuSend error: Input/output error"));
  EXPECT_EQ(radio_.ReadSMeter(0), 0);
  EXPECT_EQ(radio_.SetFrequency(0, 14070000), 1);  // answers 1 even when the write fails
}

TEST_F(YaesuDriverTest, FailedStatusReadDecodesNothingStale) {
  Attach("FT-990");
  device_->OnWrite(HexBytes("00 00 00 00 FA"), std::string(5, '\0'));
  device_->OnWrite(HexBytes("00 00 00 03 10"), Update(32, {{1, 0x15}, {2, 0x78}, {3, 0x18}}));
  Frequency hz = 0;
  ASSERT_EQ(radio_.ReadFrequency(0, &hz), 1u);
  device_->OnWrite(HexBytes("00 00 00 00 FA"), std::string(5, '\0'));
  device_->OnWrite(HexBytes("00 00 00 03 10"), "");  // the update never comes
  EXPECT_EQ(radio_.ReadFrequency(0, &hz), 0u);
  EXPECT_EQ(hz, 0u);
}

TEST_F(YaesuDriverTest, SetModeAndCommandStateForms) {
  struct Case {
    const char* model;
    int state;  // -1: SetMode(0x04), else SetCommandState(0x02, state)
    const char* command;
  } cases[] = {
      {"FT-990", -1, "00 00 00 04 0C"},       {"FT-100", -1, "00 00 00 04 0C"},
      {"FT-817", -1, "04 00 00 00 07"},       {"FT-847", -1, "04 00 00 00 07"},
      {"FT-817", 1, "00 00 00 00 02"},        {"FT-817", 0, "00 00 00 00 82"},
      {"FT-1000MP MkV", 1, "00 00 00 01 02"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.model) + " " + c.command);
    Attach(c.model);
    Expect(c.command, "00");
    EXPECT_EQ(c.state < 0 ? radio_.SetMode(0x04)
                          : radio_.SetCommandState(0x02, static_cast<uint8_t>(c.state)),
              1);
    EXPECT_EQ(device_->pendingExpectations(), 0u);
  }
  device_->Vanish();
  EXPECT_EQ(radio_.SetMode(0x04), 0);
}

TEST_F(YaesuDriverTest, ReadModeAndFilter) {
  Attach("FT-847");
  Expect("00 00 00 00 03", "01 40 70 00 82");
  EXPECT_EQ(radio_.ReadMode(), 0x82);
  Expect("00 00 00 00 03", "01 40 70 00 82");
  EXPECT_EQ(radio_.ReadValue("filter", "filter"), 1u);
  Expect("00 00 00 00 03", "01 40 70 00 02");
  EXPECT_EQ(radio_.ReadValue("mode", "mode"), 2u);
  EXPECT_EQ(radio_.ReadValue("Mode", "exact words only"), 0u);

  Attach("FT-990");
  device_->OnWrite(HexBytes("00 00 00 03 10"), Update(32, {{7, 0x03}, {8, 0x02}}));
  EXPECT_EQ(radio_.ReadMode(), 0x03);
  device_->OnWrite(HexBytes("00 00 00 03 10"), Update(32, {{7, 0x03}, {8, 0x02}}));
  EXPECT_EQ(radio_.ReadValue("filter", "filter"), 2u);

  Attach("FT-100");
  device_->OnWrite(HexBytes("00 00 00 00 10"), Update(32, {{5, 0x36}}));
  EXPECT_EQ(radio_.ReadMode(), 0x06);
}

TEST_F(YaesuDriverTest, MeterReads) {
  struct Case {
    const char* model;
    uint8_t meter;
    const char* command;
    const char* reply;
    uint8_t value;
  } cases[] = {
      {"FT-817", 0, "00 00 00 00 E7", "A9", 9},
      {"FT-817", 2, "00 00 00 00 F7", "35", 5},
      {"FT-847", 0, "00 00 00 00 E7", "F7", 0x17},
      {"FT-1000MP MkV", 0, "00 00 00 00 F7", "80 80 80 80 F7", 0x80},
      {"FT-1000MP MkV", 1, "00 00 00 01 F7", "40 40 40 40 F7", 0x40},
      {"FT-100", 0, "00 00 00 00 F7", "55 00 00 00 00 00 00 00 00", 0x55},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.model) + " " + c.command);
    Attach(c.model);
    Expect(c.command, c.reply);
    EXPECT_EQ(radio_.ReadSMeter(c.meter), c.value);
  }
}

TEST_F(YaesuDriverTest, GenericValuesAndMemoryBits) {
  Attach("FT-817");
  EXPECT_EQ(radio_.SetValue("00-00-00-00-88", "raw"), 1);
  EXPECT_EQ(Written().back(), "00 00 00 00 88");
  EXPECT_EQ(radio_.SetValue("00-00-00-88", "four bytes"), 0);

  // "I-Narrow-On": two read-modify-writes of byte 1 of the current VFO's band record. Here
  // VFO B is in use (0x55 bit 0) on band 3 (0x59 high nibble): 0x7D + 390 + 3 x 26 = 0x251.
  device_->SetResponder([](const std::string& w) {
    if (static_cast<uint8_t>(w[4]) != 0xBB) {
      return std::string();
    }
    const int address = static_cast<uint8_t>(w[0]) << 8 | static_cast<uint8_t>(w[1]);
    if (address == 0x55) {
      return HexBytes("01 00");
    }
    if (address == 0x59) {
      return HexBytes("35 00");
    }
    return address == 0x252 ? HexBytes("41 7F") : HexBytes("EE EE");
  });
  EXPECT_EQ(radio_.SetValue("I-Narrow-On", "narrow"), 1);
  const std::vector<std::string> w = Written();
  ASSERT_EQ(w.size(), 11u);
  EXPECT_EQ(w[1], "00 55 00 00 BB");
  EXPECT_EQ(w[2], "00 59 00 00 BB");
  EXPECT_EQ(w[3], "02 52 00 00 BB");
  EXPECT_EQ(w[4], "02 52 00 00 BB");   // read twice: the two must agree
  EXPECT_EQ(w[5], "02 52 49 7F BC");   // 41 with bit 08 set, the next byte written back as read
  EXPECT_EQ(w[10], "02 52 51 7F BC");  // 41 with bit 10 set (the radio still answers 41 here)
}

TEST_F(YaesuDriverTest, MemoryBitRefusals) {
  Attach("FT-817");
  EXPECT_EQ(radio_.SetValue("I-A-0x0002-01-01", "protected"), 0);
  EXPECT_TRUE(Logged("Error - cannot write to address 0x0000 to 0x0003"));
  EXPECT_TRUE(device_->writes().empty());

  Expect("00 57 00 00 BB", "10 00");
  Expect("00 57 00 00 BB", "18 00");
  EXPECT_EQ(radio_.SetValue("I-A-0x0057-80-80", "garbled"), 0);
  EXPECT_TRUE(Logged("Read EEPROM 0x0057, inconsistent values returned"));
  EXPECT_EQ(device_->writes().size(), 2u);  // nothing written
}

TEST_F(YaesuDriverTest, ConnectPreambleAndPower) {
  struct Case {
    const char* model;
    std::vector<std::string> bytes;
  } cases[] = {
      {"FT-847", {"00 00 00 00 00", "00 00 00 00 88"}},
      {"FT-100", {"00 00 00 00 00", "00 00 00 00 0F"}},
      {"FT-1000MP MkV", {"00 00 00 00 00", "00 00 00 00 0F"}},
      {"FT-817", {}},
  };
  for (const auto& c : cases) {
    Attach(c.model);
    radio_.yaesu().ConnectPreamble();
    EXPECT_EQ(Written(), c.bytes) << c.model;
  }
  Attach("FT-817");
  EXPECT_EQ(radio_.yaesu().SwitchPower(false), 1);
  EXPECT_EQ(Written(), std::vector<std::string>{"00 00 00 00 8F"});
}

}  // namespace
}  // namespace tavlorin
