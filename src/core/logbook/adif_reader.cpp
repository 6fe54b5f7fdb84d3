#include "logbook/adif_reader.h"

#include <cstring>
#include <string_view>

#include "logbook/adif_text.h"

namespace tavlorin {
namespace {

constexpr size_t kMaxText = size_t{1} << 31;

bool Blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// Where a value may end: before the next tag, a blank, or the end of the text.
bool EndsValue(std::string_view s, size_t at) { return at >= s.size() || s[at] == '<' || Blank(s[at]); }

struct Tag {
  enum Kind { kNone, kMalformed, kBare, kField } kind = kNone;
  std::string_view name;
  std::string_view type;
  size_t length = 0;
  size_t end = 0;  // just after the closing ">"
};

// Reads the tag that starts with the "<" at `at`: <NAME>, <NAME:LEN> or <NAME:LEN:TYPE>.
Tag ReadTag(std::string_view s, size_t at) {
  Tag tag;
  size_t i = at + 1;
  while (i < s.size() && s[i] != ':' && s[i] != '>' && s[i] != '<' && !Blank(s[i])) {
    ++i;
  }
  if (i >= s.size() || i == at + 1 || (s[i] != ':' && s[i] != '>')) {
    return tag;
  }
  tag.name = s.substr(at + 1, i - at - 1);
  if (s[i] == '>') {
    tag.kind = Tag::kBare;
    tag.end = i + 1;
    return tag;
  }
  tag.kind = Tag::kMalformed;
  size_t digits = ++i;
  while (i < s.size() && s[i] >= '0' && s[i] <= '9' && i - digits < 10) {
    tag.length = tag.length * 10 + static_cast<size_t>(s[i] - '0');
    ++i;
  }
  if (i == digits || i >= s.size()) {
    return tag;
  }
  if (s[i] == ':') {
    size_t type = ++i;
    while (i < s.size() && s[i] != '>' && s[i] != '<' && !Blank(s[i])) {
      ++i;
    }
    if (i >= s.size() || s[i] != '>') {
      return tag;
    }
    tag.type = s.substr(type, i - type);
  } else if (s[i] != '>') {
    return tag;
  }
  tag.kind = Tag::kField;
  tag.end = i + 1;
  return tag;
}

bool IsTagNamed(const Tag& tag, std::string_view name) {
  return tag.kind == Tag::kBare && EqualsIgnoreCase(tag.name, name);
}

// The first "<" inside `value` that starts a real tag (a field, <EOR> or <EOH>), or npos.
size_t EmbeddedTag(std::string_view s, size_t start, size_t end) {
  for (size_t at = start; at < end;) {
    const void* hit = std::memchr(s.data() + at, '<', end - at);
    if (hit == nullptr) {
      return std::string_view::npos;
    }
    at = static_cast<size_t>(static_cast<const char*>(hit) - s.data());
    Tag tag = ReadTag(s, at);
    if (tag.kind == Tag::kField || IsTagNamed(tag, "eor") || IsTagNamed(tag, "eoh")) {
      return at - start;
    }
    ++at;
  }
  return std::string_view::npos;
}

// Finds "<eoh>" in any case from `from`; npos when there is none.
size_t FindEoh(std::string_view s, size_t from) {
  while (from < s.size()) {
    const void* hit = std::memchr(s.data() + from, '<', s.size() - from);
    if (hit == nullptr) {
      return std::string_view::npos;
    }
    from = static_cast<size_t>(static_cast<const char*>(hit) - s.data());
    if (EqualsIgnoreCase(s.substr(from, 5), "<eoh>")) {
      return from;
    }
    ++from;
  }
  return std::string_view::npos;
}

class AdiParser {
 public:
  AdiParser(std::string_view s, AdifDocument* doc, const ReadProgress& progress)
      : s_(s), doc_(*doc), progress_(progress) {}

  // Reads tags from `pos` to `limit`; in the header, junk is expected and not reported.
  bool Parse(size_t pos, size_t limit, bool header);
  void HeaderDone() { headerDone_ = true; }
  void Finish();
  std::string& converted() { return converted_; }

 private:
  void Field(const Tag& tag, size_t* pos, size_t limit);
  void Warn(std::string text) { doc_.AddProblem(doc_.NextRecordNumber(), false, std::move(text)); }

  std::string_view s_;
  AdifDocument& doc_;
  const ReadProgress& progress_;
  bool headerDone_ = false;
  bool inHeader_ = false;
  std::string converted_;  // values turned into UTF-8; they follow the file's bytes
  size_t charCounted_ = 0, firstCharCounted_ = 0;
  size_t latin1_ = 0, firstLatin1_ = 0;
};

bool AdiParser::Parse(size_t pos, size_t limit, bool header) {
  inHeader_ = header;
  size_t sinceProgress = 0;
  while (pos < limit) {
    const void* hit = std::memchr(s_.data() + pos, '<', limit - pos);
    if (hit == nullptr) {
      break;
    }
    const size_t at = static_cast<size_t>(static_cast<const char*>(hit) - s_.data());
    Tag tag = ReadTag(s_.substr(0, limit), at);
    if (tag.kind == Tag::kNone || tag.kind == Tag::kMalformed) {
      if (tag.kind == Tag::kMalformed && !header) {
        const size_t close = s_.find('>', at);
        Warn("\"" + std::string(s_.substr(at, close == std::string_view::npos ? 20 : close - at + 1)) +
             "\" is not a field tag; skipped");
      }
      pos = at + 1;
      continue;
    }
    pos = tag.end;
    if (tag.kind == Tag::kField) {
      Field(tag, &pos, limit);
    } else if (EqualsIgnoreCase(tag.name, "eor")) {
      if (doc_.EndRecord() != 0 && ++sinceProgress == 1024) {
        sinceProgress = 0;
        if (progress_ && !progress_(pos, s_.size())) {
          return false;
        }
      }
    } else if (EqualsIgnoreCase(tag.name, "eoh")) {
      if (!headerDone_ && doc_.size() == 0) {
        doc_.EndHeader();
      }
      headerDone_ = true;  // a second <EOH> is ignored
    } else if (!header && !EqualsIgnoreCase(tag.name, "app_lotw_eof")) {
      Warn("the tag <" + std::string(tag.name) + "> has no length; ignored");
    }
  }
  return true;
}

void AdiParser::Field(const Tag& tag, size_t* pos, size_t limit) {
  const size_t start = *pos;
  size_t length = tag.length;
  if (start + length > limit) {
    length = limit - start;
    if (!inHeader_) {
      Warn("the value of " + std::string(tag.name) + " (length " + std::to_string(tag.length) +
           ") runs past the end of the file");
    }
  }
  size_t end = start + length;
  if (size_t cut = EmbeddedTag(s_, start, end); cut != std::string_view::npos) {
    // A length too long: the value would swallow the next field or record.
    Warn("the length " + std::to_string(tag.length) + " of " + std::string(tag.name) +
         " runs into the next tag; the value ends there");
    end = start + cut;
    while (end > start && Blank(s_[end - 1])) {
      --end;
    }
  } else if (!EndsValue(s_, end) && !IsAscii(s_.substr(start, end - start))) {
    // The writer may have counted characters, not bytes.
    const size_t bytes = Utf8PrefixBytes(s_.substr(start, limit - start), tag.length);
    if (bytes != std::string_view::npos && EndsValue(s_, start + bytes)) {
      end = start + bytes;
      if (charCounted_++ == 0) {
        firstCharCounted_ = doc_.NextRecordNumber();
      }
    } else if (!inHeader_) {
      Warn("the value of " + std::string(tag.name) + " is not followed by a tag; read as " +
           std::to_string(length) + " bytes");
    }
  } else if (!EndsValue(s_, end) && !inHeader_) {
    Warn("the value of " + std::string(tag.name) + " is not followed by a tag; read as " +
         std::to_string(length) + " bytes");
  }
  *pos = end;
  const std::string_view value = s_.substr(start, end - start);
  if (!IsAscii(value) && !IsValidUtf8(value)) {
    const size_t offset = s_.size() + converted_.size();
    AppendWindows1252AsUtf8(value, &converted_);
    doc_.AddField(tag.name, tag.type, offset, s_.size() + converted_.size() - offset);
    if (latin1_++ == 0) {
      firstLatin1_ = doc_.NextRecordNumber();
    }
    return;
  }
  doc_.AddField(tag.name, tag.type, start, end - start);
}

void AdiParser::Finish() {
  if (doc_.RecordOpen()) {
    const size_t number = doc_.EndRecord();
    doc_.AddProblem(number, false, "no <EOR> at the end of the file; the record is read anyway");
  }
  if (charCounted_ > 0) {
    doc_.AddProblem(0, false,
                    std::to_string(charCounted_) +
                        (charCounted_ == 1 ? " length counts" : " lengths count") +
                        " characters, not bytes (the first in record " +
                        std::to_string(firstCharCounted_) + "); read by characters");
  }
  if (latin1_ > 0) {
    doc_.AddProblem(0, false,
                    std::to_string(latin1_) +
                        (latin1_ == 1 ? " value was" : " values were") +
                        " not UTF-8 and read as Windows-1252 (the first in record " +
                        std::to_string(firstLatin1_) + ")");
  }
}

}  // namespace

Status ReadAdif(std::string bytes, AdifDocument* document, const ReadProgress& progress) {
  *document = AdifDocument();
  if (bytes.size() >= kMaxText) {
    return Status::Error("The file is too big to read (over 2 GB)");
  }
  size_t pos = bytes.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
  // Every field starts with "<": counting them keeps the vectors from growing step by step.
  size_t tags = 0;
  for (const char* at = bytes.data(); (at = static_cast<const char*>(std::memchr(
                                           at, '<', bytes.data() + bytes.size() - at))) != nullptr;
       ++at) {
    ++tags;
  }
  document->Reserve(tags / 8, tags);
  std::string_view s(bytes);
  AdiParser parser(s, document, progress);
  bool going = true;
  if (pos < s.size() && s[pos] != '<') {
    // Free text first: the header runs to <EOH>; a tag in its text is a header field.
    const size_t eoh = FindEoh(s, pos);
    if (eoh == std::string_view::npos) {
      document->AddProblem(0, false, "no <EOH> after the header text; records are read from the first field");
    } else {
      going = parser.Parse(pos, eoh, true);
      document->EndHeader();
      parser.HeaderDone();
      pos = eoh + 5;
    }
  }
  going = going && parser.Parse(pos, s.size(), false);
  if (!going) {
    *document = AdifDocument();
    return Status::Error("Cancelled");
  }
  parser.Finish();
  std::string converted = std::move(parser.converted());
  document->text() = std::move(bytes);
  document->text().append(converted);
  if (document->text().size() >= size_t{1} << 32) {
    *document = AdifDocument();
    return Status::Error("The file is too big to read (over 2 GB)");
  }
  return Status::Ok();
}

}  // namespace tavlorin
