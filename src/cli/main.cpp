// sorvel2-cli: the editor without a window, for scripts and batch jobs.
#include <iostream>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "system/Text.h"

int main(int argc, char** argv) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  try {
    return Cli::run(arguments, std::cout, std::cerr);
  } catch (const std::exception& exception) {
    const std::string text = System::Text::singleLine(exception.what());
    std::cerr << "sorvel2-cli: " << text << '\n';
    return Cli::kUnreadable;
  }
}
