// The Cabrillo dialog's choice lists, each kept as the one comma-separated text the dialog has
// always offered (the contest list keeps its missing comma between "CQ-160-SSB" and
// "CQ-WPX-CW": the choice "CQ-160-SSBCQ-WPX-CW" stands where two should), and the ARRL
// sections with the abbreviations a version 3.0 log writes as LOCATION.
//
// Constant data; any thread.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavlorin {

inline constexpr const char* kCabrilloOperators =
    "SINGLE-OP,SINGLE-OP-ASSISTED,MULTI-ONE,MULTI-TWO,MULTI-MULTI,SCHOOL-CLUB,SWL,CHECKLOG,"
    "SINGLE-OP-PORTABLE,OVER,MULTI-LIMITED,MULTI-UNLIMITED";
inline constexpr const char* kCabrilloBands = "ALL,160M,80M,40M,20M,15M,10M,LIMITED";
inline constexpr const char* kCabrilloPowers = "HIGH,LOW,QRP";
inline constexpr const char* kCabrilloModes = "CW,SSB,MIXED";
inline constexpr const char* kCabrilloDxpeditions = "DXPEDITION,NON-DXPEDITION";
inline constexpr const char* kCabrilloOverlays = "ROOKIE,BAND-LIMITED,TB-WIRES,OVER-50,HQ";
inline constexpr const char* kCabrilloAssisted = "ASSISTED,NON-ASSISTED";
inline constexpr const char* kCabrilloTimes = "12-HOURS,24-HOURS";
inline constexpr const char* kCabrilloContests =
    "AP-SPRINT,ARRL-10,ARRL-160,ARRL-DX-CW,ARRL-DX-SSB,ARRL-SS-CW,ARRL-SS-SSB,ARRL-UHF-AUG,"
    "ARRL-VHF-JAN,ARRL-VHF-JUN,ARRL-VHF-SEP,ARRL-RTTY,BARTG-RTTY,CQ-160-CW,CQ-160-SSBCQ-WPX-CW,"
    "CQ-WPX-RTTY,CQ-WPX-SSB,CQ-VHF,CQ-WW-CW,CQ-WW-RTTY,CQ-WW-SSB,DARC-WAEDC-CW,DARC-WAEDC-RTTY,"
    "DARC-WAEDC-SSB,IARU-HF,JIDX-CW,JIDX-SSB,NAQP-CW,NAQP-RTTY,NAQP-SSB,NA-SPRINT-CW,"
    "NA-SPRINT-SSB,NEQP,OCEANIA-DX-CW,OCEANIA-DX-SSB,RSGB-IOTA,SAC-CW,SAC-SSB,STEW-PERRY,"
    "TARA-RTTY";

// A list text split at its commas.
std::vector<std::string> SplitChoices(std::string_view list);

struct ArrlSection {
  const char* name;          // as the dialog offers it
  const char* abbreviation;  // as Cabrillo 3.0's LOCATION wants it
};

// "- Foreign DX -" first, then the sections in the ARRL's order, from "Connecticut" through
// the Canadian sections to "Northern Territories".
std::span<const ArrlSection> ArrlSections();

// The abbreviation of a section given by name or abbreviation (any case); empty if unknown.
std::string ArrlSectionAbbreviation(std::string_view section);

}  // namespace tavlorin
