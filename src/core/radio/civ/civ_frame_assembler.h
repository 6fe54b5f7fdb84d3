// CivFrameAssembler: turns the byte stream of a CI-V line into frames.
//
// Bytes before the first 0xFE are dropped (line noise, the tail of a frame we came in on).
// A 0xFE at position 2 or later starts a new frame: the frame before it was cut short (a
// collision on the bus, a radio switched off mid-frame). Extra preamble bytes (FE FE FE ...) are
// taken as one preamble. A frame that grows past kCivMaxFrame without 0xFD is dropped.
//
// Owned by one reader; not thread-safe.
#pragma once

#include <cstdint>

#include "radio/civ/civ_frame.h"

namespace tavlorin {

class CivFrameAssembler {
 public:
  // Adds one byte; true when it completed a frame, which frame() then holds until the next Add.
  bool Add(uint8_t byte);
  const CivFrame& frame() const { return frame_; }
  void Reset() { frame_.bytes.clear(); }

 private:
  CivFrame frame_;
  bool done_ = false;
};

}  // namespace tavlorin
