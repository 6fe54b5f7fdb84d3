#include "radio/demo/demo_defaults.h"

#include "link/manufacturer.h"

namespace tavlorin {
namespace {

constexpr std::string_view kElecraftLines[] = {
    "#   Default Elecraft values",
    "FA=00014235000",
    "FB=00003780000",
    "MD=1",
    "BG=21",
    "NB=11",
    "AN=1",
    "FR=0",
    "FT=0",
    "FW=080020",
    "GT=0021",
    "IF=00007060430     -008010 0001011101 ",
    "DS=SPCH@04",
};

constexpr std::string_view kKenwoodLines[] = {
    "#   Default Kenwood values",
    "FA=00014235000",
    "FB=00003780000",
    "MD=1",
    "AN=1",
    "RT=1",
    "FR=0",
    "FT=0",
    "RM0=0000",
    "BY=11",
    "FW=2300",
    "RM=50025",
    "#  0123456789012345678901234567890123456789",
    "IF=00001000000000000000011123020111110",
    "IS=-500",
    "MR0001=000100028450000202090900000000000000020",
    "MR1001=100100028450000202090900000000000000020",
    "MR0002=00020005011000021210410000000000000003010M RPT",
    "MR1002=10020005011000021210410000000000000003010M RPT",
    "MR0003=000300029670000402090900000000000000020",
    "MR1003=100300029570000402090900000000000000020",
    "MR0004=000400014250000202090900000000000000020",
    "MR1004=100400014250000202090900000000000000020",
    "MR0005=000500001800000302090900000000000000020",
    "MR1005=100500001800000502090900000000000000000",
    "MR1042=104200000000000000000000000000000000000",
    "MR1008=100800007072722100080800000000000000030",
    "MR0008=000800007072722100080800000000000000030",
    "MR0009=000900028000000200080800000000000000030",
    "MR1009=100900007078692100080800000000000000030",
    "MR0010=001004294967295500000000000000000000000",
    "MR1010=101004294967295500000000000000000000000",
    "EX0000000=00000001",
    "EX0010000=00000001",
    "EX0020000=00000001",
    "EX0030000=00000001",
    "AC=000",
    "FL=002002",
    "RM=10000",
    "IS= 0600",
    "CN=20",
    "TN=20",
    "VD=0750",
    "PL=050075",
    "QR=15",
    "AG0=50",
    "AG1=25",
    "SQ0=0",
    "SQ1=0",
    "GT=001",
    "DL=100",
    "FW=0000",
};

constexpr std::string_view kTenTecLines[] = {
    "#   Default TenTec values",
    "#   ORION",
    "?A=00D93578",
    "?B=0039ADA0",
    "?M=04",
    "?E=MB",
    "?J=FF",
    "?S=06800101",
    "?V=Wombat",
    "?U=40",
    "?I=20",
    "?H=60",
    "?K=040100",
    "?G=1",
    "#?P=FC18",
    "?P=03e8",
    "?Kx3=040100",
    "#?S=TF50R2S1.5",
    "?S=RM10S5",
    "?RMM=0",
    "?RSM=1",
    "?UR=M",
    "?UM=200",
    "?US=50",
    "?RMF=2500",
    "?RSF=250",
    "?RMA=F",
    "?RSA=S",
    "?RMG=50",
    "?RSG=50",
    "?RMT=0",
    "?RST=2",
    "?RMS=0",
    "?RSS=-50",
    "?CS=30",
    "?CW=80",
    "?CT=650",
    "?CV=50",
    "?CD=5",
    "?CQ=40",
    "?CK=0",
    "?TM=35",
    "?TO=25",
    "?TP=90",
    "?TF=2800",
    "?TS=5",
    "?TG=33",
    "?TA=72",
    "?TH=3",
    "?TL1=1",
    "?TL2=0",
    "?TX=0",
    "?TD1=40",
    "?TD2=80",
    "?RME=1",
    "?RMNA=3",
    "?RMNB=5",
    "?RMNN=9",
    "?RSNA=0",
    "?RSNB=0",
    "?RSNN=0",
    "?RMP=+250",
    "?RSP=-50",
    "?RMR=10",
    "?RMX=-20",
    "?RSR=30",
    "?KV=ABA",
    "?UC=MSB",
    "?P=0",
    "?RMAD=10",
    "?RMAH=5.0",
    "?RMAT=30.0",
    "?RSAD=40",
    "?RSAH=7.0",
    "?RSAT=50.0",
};

// The receiver's own codes: mode "01" is USB, filter "00" the 2.8 kHz filter, matching the
// 14.225 MHz starting frequency.
constexpr std::string_view kPcr1000Lines[] = {
    "#   Default PCR-1000 values",
    "freq=0014225000",
    "mode=01",
    "filter=00",
    "ne100=00000000000000000000000000000000",
    "ne110=00000000000000000000000000000000",
    "ne120=00000000000000000000000000000000",
    "ne130=00000000000000000000000000000000",
    "ne140=00000000000000000000000000000000",
    "ne150=00000000000000000000000000000000",
    "ne160=00000000000000000000000000000000",
    "ne170=00000000000000000000000000000000",
    "ne180=00000000000000000000000000000000",
    "ne190=00000000000000000000000000000000",
    "ne1a0=00000000000000000000000000000000",
    "ne1b0=00000000000000000000000000000000",
    "ne1c0=00000000000000000000000000000000",
    "ne1d0=00000000000000000000000000000000",
    "ne1e0=00000000000000000000000000000000",
    "ne1f0=00000000000000000000000000000000",
};

// An FT-991 on 20 m in USB, VFO A in use, receiving.
constexpr std::string_view kYaesuAsciiLines[] = {
    "#   Default Yaesu ASCII values",
    "ID=0570",
    "FA=014074000",
    "FB=007074000",
    "MD0=2",
    "MD1=2",
    "#  0123456789012345678901234",
    "IF=001014074000+000000200000",
    "SM0=000",
    "TX=0",
    "VS=0",
    "FT=0",
    "PS=1",
    "AI=0",
    "AG0=128",
    "RG0=255",
    "SQ0=000",
    "PC=100",
    "GT0=4",
    "NB0=0",
    "NR0=0",
    "PA0=1",
    "RA0=0",
    "NA0=0",
    "SH0=16",
    "RM1=000",
    "RM3=000",
    "RM4=000",
    "RM5=000",
    "RM6=000",
};

}  // namespace

std::span<const std::string_view> DemonstrationTable(int family) {
  switch (family) {
    case kElecraft:
      return kElecraftLines;
    case kKenwood:
      return kKenwoodLines;
    case kTenTec:
      return kTenTecLines;
    case kGeneral:
      return kPcr1000Lines;
    case kYaesuAscii:
      return kYaesuAsciiLines;
    default:
      return {};
  }
}

void LoadDemonstrationDefaults(int family, ValueMap& values) {
  values.Clear();
  for (std::string_view line : DemonstrationTable(family)) {
    values.LoadLine(line);
  }
}

}  // namespace tavlorin
