// Runs of the command as its users run it: arguments and files in; output, complaints and status
// out.
#pragma once

#include <sys/wait.h>

#include "support/scratchfolder.h"

namespace optxv::test {

struct outcome {
  int status = -1;
  std::string out, err;
};

/// A test with a folder of its own for the files of the command.
class commandrun : public testing::Test {
 protected:
  void save(const std::string& name, const std::string& text) const { folder_.put(name, text); }
  std::string get(const std::string& name) const { return folder_.get(name); }
  /// Runs the command in the folder, with arguments in the words of a shell, and with variables of
  /// the environment: NAME=VALUE.
  outcome run(const std::string& arguments, const std::string& variables = "") const {
    const std::string line = "cd '" + folder_.path() + "' && env -u COLUMNS -u NO_COLOR " +
                             variables + " '" OPTXV_COMMAND_FILE "' >.out 2>.err </dev/null " +
                             arguments;
    const int status = std::system(line.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, get(".out"), get(".err")};
  }

  const scratchfolder folder_;
};

}  // namespace optxv::test
