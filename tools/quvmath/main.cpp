// quvmath: runs the library's main jobs from a shell.
#include <algorithm>
#include <exception>
#include <iostream>
#include <string>

#include "commands.h"
#include "quv/base/base.h"

namespace {

using quvmath::Command;

// One line per subcommand; keep them in alphabetical order.
const Command kCommands[] = {
    {"convert", "convert a matrix between XML, binary, stream and ASC files", quvmath::kConvertHelp,
     quvmath::RunConvert},
    {"crossval", "cross-validate a least-squares model of one column", quvmath::kCrossvalHelp,
     quvmath::RunCrossval},
    {"dist", "distributions, quantiles and critical values", quvmath::kDistHelp, quvmath::RunDist},
    {"encode", "show the binary images of numbers", quvmath::kEncodeHelp, quvmath::RunEncode},
    {"eval", "evaluate an expression, alone or over the rows of an ASC file", quvmath::kEvalHelp,
     quvmath::RunEval},
    {"fft", "power spectrum of one column of an ASC file", quvmath::kFftHelp, quvmath::RunFft},
    {"randgen", "random numbers from a tabulated distribution", quvmath::kRandgenHelp,
     quvmath::RunRandgen},
    {"smooth", "smooth or differentiate a column of an ASC or CSV file", quvmath::kSmoothHelp,
     quvmath::RunSmooth},
    {"stats", "descriptive statistics of the columns of an ASC file", quvmath::kStatsHelp,
     quvmath::RunStats},
};

void PrintUsage(std::ostream& out) {
  out << "usage: quvmath [--help] [--version] COMMAND [ARGS...]\n\n"
         "Numerical data analysis from the command line.\n\ncommands:\n";
  for (const Command& c : kCommands) {
    out << "  " << c.name << std::string(12 - std::min<std::size_t>(c.name.size(), 11), ' ')
        << c.summary << '\n';
  }
  out << "\nRun 'quvmath COMMAND --help' for the options of a command.\n";
}

}  // namespace

int main(int argc, char** argv) {
  const quvmath::Args all(argv + 1, argv + argc);
  if (all.empty()) {
    PrintUsage(std::cerr);
    return 2;
  }
  const std::string& first = all.front();
  if (first == "--help" || first == "-h" || first == "help") {
    PrintUsage(std::cout);
    return 0;
  }
  if (first == "--version") {
    std::cout << "quvmath " << quv::kVersionString << '\n';
    return 0;
  }
  for (const Command& c : kCommands) {
    if (first != c.name) continue;
    const quvmath::Args args(all.begin() + 1, all.end());
    if (quvmath::WantsHelp(args)) {
      std::cout << c.help;
      return 0;
    }
    try {
      const int status = c.run(args, std::cout);
      // A full disk or a closed pipe must not pass for success.
      if (!std::cout.flush()) {
        std::cerr << "quvmath " << c.name << ": writing the output failed\n";
        return quvmath::kExitFailure;
      }
      return status;
    } catch (const quvmath::UsageError& e) {
      std::cerr << "quvmath " << c.name << ": " << e.message << "\n"
                << "Run 'quvmath " << c.name << " --help' for usage.\n";
      return 2;
    } catch (const std::exception& e) {
      std::cerr << "quvmath " << c.name << ": " << e.what() << '\n';
      return 1;
    }
  }
  std::cerr << "quvmath: unknown command \"" << first << "\"\n";
  PrintUsage(std::cerr);
  return 2;
}
