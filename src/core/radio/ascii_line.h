// AsciiLine: the transaction routine of the line-based receivers and transceivers (Ten-Tec,
// PCR-1000, NRD-535): commands are text with a line end, replies are text lines.
//
// Query sends a command and reads reply lines until one begins with the expected prefix,
// skipping at most a few others (a PCR-1000 answers each set with "G000"; a radio may still
// be sending the tail of an earlier reply). A line whose last byte is not the line end is
// incomplete and never taken. Reads are bounded by the link's time-outs; the radio's abort
// flag ends a query early.
//
// Owned by one driver of one CatRadio; used on that radio's thread only.
#pragma once

#include <optional>
#include <string>

namespace tavlorin {

class CatRadio;

class AsciiLine {
 public:
  // `lineEnd` is appended to every command ("\r" or "\r\n"); replies end with `replyEnd`.
  AsciiLine(CatRadio& radio, std::string lineEnd, char replyEnd)
      : radio_(radio), lineEnd_(std::move(lineEnd)), replyEnd_(replyEnd) {}

  bool Send(const std::string& command);
  // One reply line without its line end (and without a CR before an LF); nullopt on time-out
  // or an incomplete line.
  std::optional<std::string> ReadLine();
  // Sends `command`, then returns the text after `prefix` of the first line that starts with
  // it; nullopt when none came.
  std::optional<std::string> Query(const std::string& command, const std::string& prefix);

 private:
  static constexpr int kMaxSkippedLines = 4;
  static constexpr size_t kMaxLine = 256;

  CatRadio& radio_;
  std::string lineEnd_;
  char replyEnd_;
};

}  // namespace tavlorin
