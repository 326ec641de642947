// A folder of its own for the files of a run, gone when the run is over.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace optxv::bench {

class scratch {
 public:
  scratch() {
    folder_ = (std::filesystem::temp_directory_path() / "optxv-bench-XXXXXX").string();
    if (::mkdtemp(folder_.data()) == nullptr) throw std::runtime_error("no temporary folder");
  }
  ~scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  scratch(const scratch&) = delete;
  scratch& operator=(const scratch&) = delete;

  std::string path(const std::string& name) const { return folder_ + "/" + name; }

  /// Writes a file and gives its path.
  std::string file(const std::string& name, const std::string& text) const {
    append(name, text);
    return path(name);
  }
  void append(const std::string& name, const std::string& text) const {
    std::ofstream(path(name), std::ios::binary | std::ios::app) << text;
  }

 private:
  std::string folder_;
};

/// The content of a file.
inline std::string content(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace optxv::bench
