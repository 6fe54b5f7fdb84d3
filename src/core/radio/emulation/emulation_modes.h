// Mode numbers between a radio's own family and the Kenwood digits an emulated port speaks
// (1 LSB, 2 USB, 3 CW, 4 FM, 5 AM, 6 FSK, 7 CW-R, 9 FSK-R).
//
// Kenwood and Elecraft radios use those digits themselves. ICOM CI-V mode codes and the Yaesu
// 5-byte protocol's mode bytes are translated; a mode without a Kenwood counterpart (ICOM wide
// FM, Yaesu packet) reads as 0 (not known) and a Kenwood digit the family cannot take as -1.
// Pure; any thread.
#pragma once

namespace tavlorin {

int ToKenwoodMode(int family, int mode);
// -1 when the family has no such mode.
int FromKenwoodMode(int family, int kenwoodMode);

}  // namespace tavlorin
