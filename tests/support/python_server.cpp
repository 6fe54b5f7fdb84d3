#include "support/python_server.h"

#include <sstream>

namespace tavlorin::testing {
namespace {

std::vector<std::string> PythonCommand(const std::string& script,
                                       const std::vector<std::string>& args) {
  std::vector<std::string> argv = {"/usr/bin/python3", "-u", FixturePath(script)};
  argv.insert(argv.end(), args.begin(), args.end());
  return argv;
}

}  // namespace

std::string FixturePath(const std::string& name) {
  return std::string(TAVLORIN_TEST_FIXTURES_DIR) + "/" + name;
}

PythonServer::PythonServer(const std::string& script, const std::vector<std::string>& args)
    : child_(PythonCommand(script, args)) {
  std::string out = child_.WaitForLines(1, std::chrono::seconds(20));
  std::istringstream first(out);
  first >> port_;
}

std::vector<std::string> PythonServer::WaitForEvents(size_t count,
                                                     std::chrono::milliseconds limit) {
  std::istringstream out(child_.WaitForLines(count + 1, limit));
  std::vector<std::string> events;
  std::string line;
  std::getline(out, line);  // the port
  while (std::getline(out, line)) {
    events.push_back(line);
  }
  return events;
}

}  // namespace tavlorin::testing
