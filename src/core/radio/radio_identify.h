// IdentifyRadio: finds out which radio answers on a port when the user knows neither its
// family nor its speed, and proves the finding by connecting.
//
// Order of tries, each speed fastest first: the ASCII families' "ID;" (Kenwood, Elecraft, the
// QRP Labs and (tr)uSDX radios: three digits; Yaesu ASCII: four digits), then CI-V's 19 00 sent
// to the broadcast address 00 (every ICOM radio answers with its own address). The identity
// names a model of the definitions (an Elecraft, which answers "ID017;" as the TS-570 it
// imitates, is told by its answer to "K2;"); an identity no definition carries falls back to a
// model whose commands the family's radios share (TS-480, FT-991A, IC-7300 with the address
// found). The 5-byte Yaesu radios have no identity command and are not found this way.
//
// Blocks for up to a few seconds per speed on a silent port; call it off any window's thread.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace tavlorin {

struct IdentifiedRadio {
  std::string model;      // a model of the definitions
  std::string speed;      // "38400"
  std::string address;    // ICOM: the CI-V address found ("94"); otherwise empty
  std::string identity;   // what the radio answered ("0570", "020", "94")
  std::string report;     // the connection's identity line ("found FT-991A, connected as ...")
};

// `progress` (may be empty) gets one line per try ("ID; at 38400 bit/s: no answer").
std::optional<IdentifiedRadio> IdentifyRadio(const std::string& port, int commsRxTimeoutMs,
                                             const std::function<void(const std::string&)>& progress);

// The connection preset of a finding: "FT-991A,/dev/ttyUSB0,38400", with ",Addr:94" for ICOM.
std::string IdentifiedPreset(const IdentifiedRadio& radio, const std::string& port);

}  // namespace tavlorin
