// Handles of different threads are free of each other: each thread has handles of its own, and gets
// from them what it would get alone. The thread sanitizer runs this too.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "optxv/embedding.h"
#include "optxv/optxv.h"
#include "support/scratchfolder.h"

namespace {

const std::string examples = OPTXV_SOURCE_DIR "/examples/";

std::int32_t append(void* text, const char* bytes, std::size_t size) {
  static_cast<std::string*>(text)->append(bytes, size);
  return 0;
}

void hear(void* text, const optxv_message* message) {
  *static_cast<std::string*>(text) += std::to_string(message->place.line) + ' ';
}

/// Everything that one use of the library gives back, the file `own` among it.
std::string onerun(const std::string& own) {
  std::string all;
  char text[OPTXV_TEXT_SIZE];
  optHandle options = nullptr;
  xcreate(&options);
  optxv_listener listener{};
  listener.size = sizeof listener;
  listener.context = &all;
  listener.message = hear;
  optxv_listen(options, &listener);

  all += std::to_string(coptReadDefinition(options, (examples + "solver.def").c_str()));
  for (const char* name : {"faulty.opt", "solver.opt", "missing.opt"})
    all += std::to_string(coptReadParameterFile(options, (examples + name).c_str()));
  coptReadFromStr(options, "method newton");
  coptShowHelp(options, "3");
  std::int32_t kind = 0;
  for (std::int32_t number = 1; number <= optMessageCount(options); ++number) {
    coptGetMessage(options, number, text, &kind);
    all += text + std::string("\n");
  }

  all += std::to_string(optxv_write_parameter_text(options, append, &all));
  all += std::to_string(coptWriteParameterFile(options, own.c_str()));
  optResetAll(options);
  all += std::to_string(coptReadParameterFile(options, own.c_str()));
  for (std::int32_t number = 1; number <= optCount(options); ++number) {
    coptGetNameNr(options, number, text);
    const std::string name = text;
    coptGetValStr(options, name.c_str(), text);
    all += name + ' ' + text + '\n';
  }
  coptVersion(options, text);
  xfree(&options);
  return all + text;
}

/// Sets the locale of the process again and again, as a host may do at any time.
class changinglocale {
 public:
  ~changinglocale() {
    done_ = true;
    changer_.join();
    std::setlocale(LC_ALL, "C");
  }

 private:
  std::atomic<bool> done_ = false;
  std::thread changer_{[this] {
    while (!done_)
      for (const char* name : {"C.UTF-8", "C", "POSIX"}) std::setlocale(LC_ALL, name);
  }};
};

TEST(Threads, HandlesAreFreeOfEachOther) {
  const optxv::test::scratchfolder folder;
  const std::string alone = onerun(folder / "alone.opt");
  const changinglocale besides;
  std::vector<int> differ(4, 0);
  std::vector<std::thread> threads;
  for (std::size_t which = 0; which < differ.size(); ++which)
    threads.emplace_back([&, which] {
      const std::string own = folder / (std::to_string(which) + ".opt");
      for (int turn = 0; turn < 10; ++turn) differ[which] += onerun(own) != alone;
    });
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(differ, testing::Each(0)) << alone;
}

}  // namespace
