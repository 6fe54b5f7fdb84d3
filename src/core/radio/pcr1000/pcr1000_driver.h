// Pcr1000Driver: the operations of the PCR-1000 receiver (family 7); CatRadio's switch calls
// them.
//
// The receiver has no front panel and never reports its frequency, mode or filter: it is told
// all three at once ("K0" + ten digits of hertz + mode + filter + "00") and the driver keeps
// them in the radio's value map under "freq", "mode" and "filter" (the demonstration table uses
// the same keys). Reads answer from the map; the S-meter and other queries ask the receiver.
// Every line sent is logged "Send PCR-1000 %s", every reply "Read PCR-1000 %s". Commands end
// with CR LF; a set is answered "G000" (taken) or "G001" (refused).
//
// Owned by its CatRadio and used on that radio's thread only.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "radio/ascii_line.h"
#include "radio/frequency.h"

namespace tavlorin {

class CatRadio;

class Pcr1000Driver {
 public:
  explicit Pcr1000Driver(CatRadio& radio) : radio_(radio), line_(radio, "\r\n", '\n') {}

  // Powers the receiver on ("H101", "G300", until "H1" reports "01", four tries), moves it to
  // 38 400 bit/s ("G105") and tunes it to the kept state. 0 and *message on failure.
  int StartUp(std::string* message);
  // Off sends "H100"; on sends nothing (StartUp powers it). Always 1.
  int SwitchPower(bool on);
  uint32_t ReadFrequency(Frequency* hz);
  int SetFrequency(Frequency hz);
  // The receiver's mode code (00 LSB, 01 USB, 02 AM, 03 CW, 05 NFM, 06 WFM).
  uint8_t ReadMode();
  uint8_t ReadSMeter();
  uint32_t ReadValue(const std::string& command);
  // "freq0014070000", "mode05", "filter02" change the kept state and retune; any other text is
  // a receiver command sent as it stands ("J4180").
  int SetValue(const std::string& command);
  std::string ReadString(const std::string& command);

 private:
  bool SendLogged(const std::string& command);
  std::optional<std::string> QueryLogged(const std::string& command, const std::string& prefix);
  // Sends the kept frequency, mode and filter.
  bool Tune();
  bool SetCommand(const std::string& command);

  CatRadio& radio_;
  AsciiLine line_;
};

}  // namespace tavlorin
