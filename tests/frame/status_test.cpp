#include "frame/status.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <functional>
#include <string>

#include "options/optionkinds.h"
#include "support/everykind.h"
#include "support/optiontable.h"
#include "support/sanitized.h"
#include "writers/optionwriter.h"

// Memory that runs out after so many more blocks; for ever if below 0. The blocks of a sanitizer
// are its own, so that nothing runs out under one.
namespace {
long blocksleft = -1;
}
#if !OPTXV_SANITIZED && defined(__GLIBC__)
namespace {
bool runsout() {
  if (blocksleft > 0) --blocksleft;
  return blocksleft == 0;
}
}  // namespace
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* malloc(std::size_t size) noexcept {
  return runsout() ? nullptr : __libc_malloc(size);
}
void* realloc(void* block, std::size_t size) noexcept {
  return runsout() ? nullptr : __libc_realloc(block, size);
}
}
#endif

namespace optxv {
namespace {

const std::string values =
    "steplim 5\nlogname \"other\"\nmethod primal\nnames /a\nnames /b\n--made first\n"
    "x.scale('a',*) = 2\ntie e(i,'b')$v(i) = 1\nscale maybe\nnosuch 1\nsay " +
    std::string(200, 'x');

/// Runs a call again and again on a new handle with the values, each time with more memory, until
/// there is enough. Whenever there was not, the handle is still good.
void starve(const std::string& what, const std::function<std::int32_t(tzmaoptions&)>& call,
            const std::function<void(tzmaoptions&)>& after = {}) {
  std::int32_t status = ENOMEM;
  for (long blocks = 1; status != optxv_ok && blocks < 5000; blocks++) {
    tzmaoptions options;
    options.readdefinitiontext("d", everykind());
    blocksleft = blocks;
    status = call(options);
    blocksleft = -1;
    if (status != optxv_ok) {
      ASSERT_EQ(status, ENOMEM) << what;
      for (std::int32_t i = 1; i <= optxv_indicator_count(&options, nullptr); i++) {
        optxv_indicator entry;  // a whole one, or none
        ASSERT_EQ(optxv_indicator_info(&options, i, &entry), optxv_ok);
        EXPECT_EQ(entry.equation_labels * 10 + entry.variable_labels, 21) << what << blocks;
      }
      if (after) after(options);
    }
    EXPECT_EQ(options.parser, nullptr);
    EXPECT_EQ(options.filedepth + options.assigndepth, 0);
    EXPECT_EQ(options.assigning.road, roadCall);
    for (std::int32_t i = 1; i <= optxv_message_count(&options); i++) {
      optxv_message message;
      ASSERT_EQ(optxv_message_info(&options, i, &message), optxv_ok);
    }
    optxv_reset_all(&options);
    ASSERT_EQ(optxv_read_parameter_text(&options, "p", values.data(), values.size()), optxv_ok);
    EXPECT_EQ(options.getasstring("logname"), "other") << what << blocks;
    EXPECT_EQ(optxv_message_count(&options), 5) << what << blocks;
  }
  EXPECT_EQ(status, optxv_ok) << what;
}

TEST(Memory, ThatRunsOutIsAStatusAndLeavesTheHandleGood) {
  starve("definition", [](tzmaoptions& options) {
    const char more[] =
        "more integer 1 1 0 9 1 1 More\nlimits group 7 1 The limits\nmo synonym more";
    return optxv_read_definition_text(&options, "m", more, sizeof more - 1);
  });
  starve("parameters", [](tzmaoptions& options) {
    return optxv_read_parameter_text(&options, "p", values.data(), values.size());
  });
  starve("line", [](tzmaoptions& options) {
    return optxv_read_line(&options, values.data(), values.size());
  });
  starve("arguments", [](tzmaoptions& options) {
    std::string words[] = {"program", "--setplim=1", "--steplim", "7"};
    char* argv[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), nullptr};
    int argc = 4;
    const std::int32_t status = optxv_read_arguments(&options, &argc, argv, 0);
    EXPECT_EQ(argc, status == optxv_ok ? 1 : 4);
    return status;
  });
  starve("text",
         [](tzmaoptions& options) { return optxv_set_text(&options, "logname", "abc", 3); });
  starve("written", [](tzmaoptions& options) {
    return optxv_write_parameter_text(
        &options, [](void*, const char*, std::size_t) -> std::int32_t { return 0; }, nullptr);
  });
}

TEST(Memory, ThatRunsOutLeavesTheValuesBeforeARestore) {
  optxv_snapshot* taken = nullptr;
  starve(
      "restore",
      [&](tzmaoptions& options) {
        const long blocks = std::exchange(blocksleft, -1);
        optxv_free_snapshot(&taken);
        options.readparametertext("p", values);
        EXPECT_EQ(optxv_take_snapshot(&options, &taken), optxv_ok);
        optxv_reset_all(&options);
        options.readparametertext("p", "logname now");
        blocksleft = blocks;
        return optxv_restore_snapshot(&options, taken);
      },
      [](tzmaoptions& options) { EXPECT_EQ(options.getasstring("logname"), "now"); });
  optxv_free_snapshot(&taken);
}

using called = std::int32_t (*)(optxv_handle);

TEST(Arguments, ThatAreNilAreRefused) {
  // Each with a nil in it; and the same without a handle.
  const called calls[] = {
      [](optxv_handle h) { return optxv_find(h, "steplim", OPTXV_ENDED, nullptr); },
      [](optxv_handle h) { return optxv_get_integer(h, "steplim", nullptr); },
      [](optxv_handle h) { return optxv_get_integer_nr(h, 1, 1, nullptr); },
      [](optxv_handle h) { return optxv_get_real(h, "steplim", nullptr); },
      [](optxv_handle h) { return optxv_get_text(h, "logname", nullptr); },
      [](optxv_handle h) { return optxv_set_integer(h, nullptr, 1); },
      [](optxv_handle h) { return optxv_set_real(h, nullptr, 1); },
      [](optxv_handle h) { return optxv_set_text(h, nullptr, "x", 1); },
      [](optxv_handle h) { return optxv_set_text_nr(h, 1, 0, "x", 1); },
      [](optxv_handle h) { return optxv_set_text_nr(h, 1, 3, "x", 1); },
      [](optxv_handle h) { return optxv_show_value(h, 1, 1, nullptr); },
      [](optxv_handle h) { return optxv_read_parameters(h, nullptr); },
      [](optxv_handle h) { return optxv_read_line(h, nullptr, 1); },
      [](optxv_handle h) { return optxv_read_parameter_text(h, "p", nullptr, OPTXV_ENDED); },
      [](optxv_handle h) { return optxv_read_arguments(h, nullptr, nullptr, 0); },
      [](optxv_handle h) { return optxv_read_environment(h, nullptr); },
      [](optxv_handle h) { return optxv_read_environment(h, ""); },
      [](optxv_handle h) { return optxv_take_snapshot(h, nullptr); },
      [](optxv_handle h) { return optxv_restore_snapshot(h, nullptr); },
      [](optxv_handle h) { return optxv_switch(h, optxv_switch_line_mode - 1, 0); },
      [](optxv_handle h) { return optxv_option_info(h, 1, nullptr); },
      [](optxv_handle h) { return optxv_group_info(h, 1, nullptr); },
      [](optxv_handle h) { return optxv_synonym_info(h, 1, nullptr); },
      [](optxv_handle h) { return optxv_message_info(h, 1, nullptr); },
      [](optxv_handle h) { return optxv_show_message(h, 1, nullptr); },
      [](optxv_handle h) { return optxv_dot_option_info(h, 1, nullptr); },
      [](optxv_handle h) { return optxv_dot_option_label(h, 1, 1, nullptr); },
      [](optxv_handle h) { return optxv_indicator_info(h, 1, nullptr); },
      [](optxv_handle h) { return optxv_indicator_label(h, 1, 2, 1, nullptr); },
      [](optxv_handle h) { return optxv_indicator_label(h, 1, 3, 1, nullptr); },
      [](optxv_handle h) { return optxv_indicator_label(h, 1, 0, 1, nullptr); },
  };
  tzmaoptions options;
  options.readdefinitiontext("d", everykind());
  options.readparametertext("p", values);
  for (std::size_t i = 0; i < std::size(calls); ++i) {
    EXPECT_EQ(calls[i](&options), optxv_bad_argument) << i;
    EXPECT_EQ(calls[i](nullptr), optxv_bad_argument) << i;
  }
}

TEST(Arguments, ThatAreNilCountNothing) {
  const called counts[] = {
      [](optxv_handle h) { return optxv_option_count(h); },
      [](optxv_handle h) { return optxv_group_count(h); },
      [](optxv_handle h) { return optxv_synonym_count(h); },
      [](optxv_handle h) { return optxv_message_count(h); },
      [](optxv_handle h) { return optxv_dot_option_count(h, nullptr); },
      [](optxv_handle h) { return optxv_indicator_count(h, nullptr); },
      [](optxv_handle h) { return optxv_nearest_names(h, "x", 1, nullptr); },
      [](optxv_handle h) { return optxv_message_nearest(h, 1, nullptr); },
      [](optxv_handle h) { return optxv_list_count(h, 1) + 1; },
      [](optxv_handle h) {
        optxv_text item;
        return optxv_list_item(h, 1, 1, &item);
      },
      [](optxv_handle h) {
        optxv_place place;
        return optxv_message_place(h, 1, &place);
      },
      [](optxv_handle h) {
        optxv_place place;
        return optxv_value_place(h, 1, &place, nullptr, nullptr);
      },
  };
  for (std::size_t i = 0; i < std::size(counts); ++i) EXPECT_EQ(counts[i](nullptr), 0) << i;
  std::int32_t errors = 7, warnings = 7;
  optxv_error_count(nullptr, &errors, &warnings);
  EXPECT_EQ(errors + warnings, 0);
  optxv_error_count(nullptr, nullptr, nullptr);
  optxv_clear_messages(nullptr);
  optxv_free_snapshot(nullptr);
  optxv_free(nullptr);
  optxv_listen(nullptr, nullptr);
  EXPECT_EQ(optxv_create(nullptr), optxv_bad_argument);
  EXPECT_EQ(optxv_table_mark(nullptr), 0xcbf29ce484222325) << "of no bytes";
  EXPECT_STREQ(optxv_status_text(-99), "unknown status");
  EXPECT_STREQ(optxv_status_text(optxv_unknown), "no such option or entry");
}

TEST(Memory, IsNotNeededToListen) {
  tzmaoptions options;
  optxv_listener listener = {};
  listener.size = sizeof listener;
  blocksleft = 1;
  optxv_listen(&options, &listener);
  blocksleft = -1;
  EXPECT_TRUE(options.told.has_value());
  optxv_listen(&options, nullptr);
  EXPECT_FALSE(options.told.has_value());
}

TEST(Memory, ThatRunsOutIsAnExceptionOfAWriter) {
  tzmaoptions options;
  options.readdefinitiontext("d", everykind());
  const tzmaoptionwriter writer(options);
  bool whole = false;
  for (long blocks = 1; !whole && blocks < 100; blocks++) {
    blocksleft = blocks;
    try {
      writer.htmltext();
      whole = true;
    } catch (const std::bad_alloc&) {
    }
    blocksleft = -1;
  }
  EXPECT_TRUE(whole);
}

}  // namespace
}  // namespace optxv
