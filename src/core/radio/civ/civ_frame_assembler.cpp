#include "radio/civ/civ_frame_assembler.h"

namespace tavlorin {

bool CivFrameAssembler::Add(uint8_t byte) {
  std::vector<uint8_t>& f = frame_.bytes;
  if (done_) {
    f.clear();
    done_ = false;
  }
  if (byte == kCivPreamble) {
    if (f.size() < 2) {
      f.push_back(byte);
    } else if (f.size() > 2) {
      f.assign(1, byte);  // a new frame begins: the one before was cut short
    }
    // f == FE FE: a third preamble byte, still the same frame
    return false;
  }
  if (f.empty()) {
    return false;  // not inside a frame yet
  }
  if (f.size() == 1) {
    f.clear();  // a lone FE followed by anything else is not a preamble
    return false;
  }
  f.push_back(byte);
  if (byte == kCivEnd) {
    done_ = true;
    return frame_.complete();
  }
  if (f.size() >= kCivMaxFrame) {
    f.clear();
  }
  return false;
}

}  // namespace tavlorin
