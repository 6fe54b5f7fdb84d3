#include "interfaces/webpage_builder.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>

namespace tavlorin {
namespace {

void ReplaceAll(std::string& text, std::string_view token, const std::string& value) {
  for (size_t at = text.find(token); at != std::string::npos;
       at = text.find(token, at + value.size())) {
    text.replace(at, token.size(), value);
  }
}

Status CreateError(const std::string& reason) {
  return Status::Error("Error creating webpage: " + reason);
}

}  // namespace

std::string WebPageTimestamp(std::time_t when) {
  std::tm local{};
  localtime_r(&when, &local);
  char text[64];
  std::strftime(text, sizeof text, "%d-%b-%Y %H:%M:%S", &local);
  return text;
}

std::string ReplaceTokens(std::string_view line, const WebPageValues& values,
                          const std::string& timestamp) {
  std::string out(line);
  ReplaceAll(out, "###-frequency-###", values.frequency);
  ReplaceAll(out, "###-mode-###", values.mode);
  ReplaceAll(out, "###-radio-###", values.radio);
  ReplaceAll(out, "###-image-###", values.image);
  ReplaceAll(out, "###-timestamp-###", timestamp);
  return out;
}

Status BuildWebPage(const std::filesystem::path& templatePath, const WebPageValues& values,
                    std::time_t now, const std::filesystem::path& folder,
                    std::filesystem::path* built) {
  std::ifstream in(templatePath, std::ios::binary);
  if (!in) {
    return CreateError("cannot read " + templatePath.string() + ": " + std::strerror(errno));
  }
  std::ostringstream whole;
  whole << in.rdbuf();
  const std::string text = whole.str();
  const std::string timestamp = WebPageTimestamp(now);

  std::string page;
  page.reserve(text.size());
  for (size_t start = 0; start < text.size();) {
    size_t end = text.find('\n', start);
    end = end == std::string::npos ? text.size() : end + 1;
    page += ReplaceTokens(std::string_view(text).substr(start, end - start), values, timestamp);
    start = end;
  }

  *built = folder / kBuiltPageName;
  std::ofstream out(*built, std::ios::binary | std::ios::trunc);
  out << page;
  out.close();
  if (!out) {
    return CreateError("cannot write " + built->string() + ": " + std::strerror(errno));
  }
  return Status::Ok();
}

}  // namespace tavlorin
