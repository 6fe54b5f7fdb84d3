// CatRadio: the one object through which the rest of the program talks to a radio.
//
// It holds the link, the family code (`manufacturer`), the model and the connection texts, and
// offers the radio operations. Each operation switches on `manufacturer` and calls that family's
// driver (ICOM CI-V, Kenwood/Elecraft, Yaesu 5-byte and ASCII, Ten-Tec, PCR-1000, NRD-535); a
// family without an
// operation answers the default result (0, or 1 for SetFrequency). Operations return non-zero
// for success or the value read, and never throw.
//
// Thread: one thread at a time. Connect runs before the radio worker gets the object; while
// polling only the worker calls it. The exceptions are `abort` and `unsolicitedData`, atomics
// that the window's thread sets and the drivers read between replies.
//
// The connection state below is public because the family drivers share it, as members of one
// radio: only the owning thread touches it.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

#include "link/manufacturer.h"
#include "link/radio_link.h"
#include "radio/civ/civ_driver.h"
#include "radio/frequency.h"
#include "radio/kenwood/kenwood_driver.h"
#include "radio/nrd535/nrd535_driver.h"
#include "radio/pcr1000/pcr1000_driver.h"
#include "radio/radio_models.h"
#include "radio/tentec/tentec_driver.h"
#include "radio/value_map.h"
#include "radio/yaesu/yaesu_driver.h"
#include "radio/yaesu_ascii/yaesu_ascii_driver.h"
#include "shell/clock.h"

namespace tavlorin {

// What the user chose in the connection setup.
struct ConnectParams {
  int company = 0;  // the Manufacturer code of the company (6 for the demonstration radios)
  std::string model;
  std::string port;        // a device path, or "remote"
  std::string speed;       // bit rate as text, "4800"
  std::string civAddress;  // hexadecimal text, ICOM only ("5C")
  bool cts = false;
  bool dtr = false;
  bool rts = false;
  bool switchOn = false;  // switch the radio on while connecting
};

class CatRadio {
 public:
  // Asks the user a yes/no question (title, text); true for yes.
  using YesNoQuestion = std::function<bool(const std::string&, const std::string&)>;
  // Receives a frequency the radio sent unasked (a CI-V transceive broadcast). Called on the
  // radio's thread: it must only post the value on.
  using FrequencySink = std::function<void(Frequency)>;
  // Chooses the remote computer for the port name "remote"; returns the port name to use, or
  // an empty text when the user cancelled.
  using RemoteSelector = std::function<std::string()>;

  explicit CatRadio(Clock& clock = SystemClock());
  ~CatRadio();
  CatRadio(const CatRadio&) = delete;
  CatRadio& operator=(const CatRadio&) = delete;

  int Connect(const ConnectParams& params, std::string* identification, std::string* message);
  void Disconnect();
  int SwitchPower(const std::string& model, bool on);
  // vfo: 0 = VFO A or the current VFO, 1 = VFO B, 2 = (Kenwood) the frequency of "IF".
  // Ends by formatting *hz into *text (when text is given), also after a failed read.
  uint32_t ReadFrequency(int vfo, Frequency* hz, std::string* text = nullptr);
  int SetFrequency(int vfo, Frequency hz);
  uint8_t ReadMode();
  int SetMode(uint8_t mode);
  // The highest mode number SetMode can send to this radio as it is (Kenwood and Elecraft
  // send one digit, or a letter up to F with mode letters); 255 where the number is a byte.
  uint8_t HighestMode() const;
  int SetFilter(uint8_t filter);
  int SetVfo(uint8_t command, uint8_t data);
  int SetMemory(uint8_t command, uint8_t data);
  int SetCommandState(uint8_t command, uint8_t on);
  uint8_t ReadSMeter(uint8_t meter);
  uint32_t ReadValue(const std::string& command, const std::string& label);
  int SetValue(const std::string& command, const std::string& label);
  std::string ReadString(const std::string& command);

  // The radio definition of `modelName`: the model's quirks (properties), CI-V frequency width
  // and family; an empty definition for a model the definitions do not list. Any thread that
  // may read modelName may call it.
  const RadioModel& definition() const { return RadioModelOrDefault(modelName); }

  RadioLink& link() { return link_; }
  Clock& clock() { return clock_; }
  ValueMap& values() { return values_; }
  KenwoodDriver& kenwood() { return kenwood_; }
  CivDriver& civ() { return civ_; }
  YaesuDriver& yaesu() { return yaesu_; }
  YaesuAsciiDriver& yaesuAscii() { return yaesuAscii_; }
  TenTecDriver& tentec() { return tentec_; }
  Pcr1000Driver& pcr1000() { return pcr1000_; }
  Nrd535Driver& nrd535() { return nrd535_; }

  void SetYesNoQuestion(YesNoQuestion ask) { ask_ = std::move(ask); }
  void SetRemoteSelector(RemoteSelector select) { selectRemote_ = std::move(select); }
  void SetUnsolicitedFrequencySink(FrequencySink sink) { frequencySink_ = std::move(sink); }
  // For the drivers: hands a frequency the radio sent unasked to the sink, if any.
  void PostUnsolicitedFrequency(Frequency hz) const;

  // Connection state, shared by the drivers.
  int manufacturer = 0;
  int isPcr1000 = 0;
  int isDemo = 0;
  int useCts = 0;
  int useDtr = 0;
  int useRts = 0;
  uint8_t civAddress = 0;
  uint8_t civControllerAddress = 0xE0;
  uint8_t civReportedAddress = 0;
  std::string civAddressText;
  std::string portName;
  std::string modelName;
  std::string speedText;
  std::string extraText;
  // What the radio said it is when Connect asked (Kenwood and Yaesu ASCII "ID;", ICOM 19 00):
  // the identity text ("0570", "020", the CI-V address "94"), and "found FT-991A, connected as
  // FT-991A" when the identity names a model of the family. Empty when the radio gave none.
  std::string identity;
  std::string identityReport;
  // The setting "m_nCommsRxTimeout" as read when the radio was created.
  int commsRxTimeoutMs = kDefaultCommsRxTimeoutMs;

  // Set by the window's thread when a user action is queued; a driver gives up a long read
  // early when it sees it. The worker clears it before running a user action.
  std::atomic<bool> abort{false};
  // Set by the CI-V reader when a broadcast for address 00 arrives: the worker then turns the
  // next request into a frequency read.
  std::atomic<bool> unsolicitedData{false};
  bool transceiveSeen = false;
  // Cleared by the poll before the meter request; a driver may set it to ask for a pause.
  std::atomic<bool> waitFlag{false};
  // A link that wants slower polling (the remote link): timer 104 waits 2000 ms, and the poll's
  // phase request is sent only while companionCount is non-zero.
  bool slowLink = false;
  std::atomic<int> companionCount{0};

 private:
  bool OpenPort(std::string* message);
  bool FamilyStartUp(const ConnectParams& params, std::string* identification,
                     std::string* message);
  bool ReadFrequencyWithRetries(const ConnectParams& params, std::string* message);
  // Reads the identity of a connected radio into `identity` and `identityReport`, and logs it.
  void ReadIdentity();

  Clock& clock_;
  RadioLink link_;
  ValueMap values_;
  KenwoodDriver kenwood_{*this};
  CivDriver civ_{*this};
  YaesuDriver yaesu_{*this};
  YaesuAsciiDriver yaesuAscii_{*this};
  TenTecDriver tentec_{*this};
  Pcr1000Driver pcr1000_{*this};
  Nrd535Driver nrd535_{*this};
  YesNoQuestion ask_;
  RemoteSelector selectRemote_;
  FrequencySink frequencySink_;
};

// True for the four answers that mean no radio replied: 0, 0xFFFFFFFF, 0x0000FFFF, 0xFFFF0000.
bool IsNoRadioFrequency(Frequency hz);

}  // namespace tavlorin
