// sorvel2-cli's commands run in-process, as the tests of each command call them: the
// exit status and what went to each stream.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "cli/Commands.h"

namespace CliTest {

struct Outcome {
  int status;
  std::string out;
  std::string err;
};

inline Outcome run(const std::vector<std::string>& arguments) {
  std::ostringstream out;
  std::ostringstream err;
  const int status = Cli::run(arguments, out, err);
  return {status, out.str(), err.str()};
}

}  // namespace CliTest
