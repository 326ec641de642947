// fix: what has one sure repair, repaired.

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>

#include "lint/linter.h"
#include "output/delivery.h"
#include "output/lines.h"
#include "tasks/product.h"
#include "tasks/tasks.h"
#include "text/edited.h"
#include "text/printable.h"
#include "text/shelf.h"

namespace command {
namespace {

/// A repair may bring out the next one, as a name that is put right has its value read. It takes
/// two or three rounds; more would be a repair that never ends.
constexpr int mostrounds = 10;

/// Text that is written to a stream and kept back.
class keptback {
 public:
  keptback() : stream_(open_memstream(&text_, &size_)) {
    if (stream_ == nullptr) throw std::bad_alloc();
  }
  ~keptback() {
    std::fclose(stream_);
    std::free(text_);
  }
  keptback(const keptback&) = delete;
  keptback& operator=(const keptback&) = delete;
  std::FILE* stream() const { return stream_; }
  /// What was written. Throws std::bad_alloc if there was no room for all of it.
  std::string_view text() const {
    if (std::fflush(stream_) != 0 || std::ferror(stream_) != 0) throw std::bad_alloc();
    return {text_, size_};
  }

 private:
  char* text_ = nullptr;
  std::size_t size_ = 0;
  std::FILE* stream_;
};

/// A file that is repaired. BORROWS: the text that was read.
struct patient {
  std::string name;
  editedtext text;
  std::vector<textchange> changes = {};  ///< of this round
};

class fixing {
 public:
  explicit fixing(const request& given) : given_(given) {}

  /// Reads the files. Gives the exit status if one cannot be repaired, else 0.
  int open();
  /// Repairs, and gives the exit status for what is left.
  int repair();
  /// Writes, or shows, what has changed. Gives the exit status if that fails, else 0.
  int deliver() const;
  /// Says what is left.
  void telltherest() const { put(stderr, left_); }

 private:
  void gather(const finding& found);
  patient* named(const std::string& file);
  bool applied();
  std::string summary(const tally& left) const;

  const request& given_;
  shelf shelf_;
  std::vector<patient> files_;
  drafttexts drafts_;
  std::size_t repairs_ = 0;
  std::string left_;  ///< what there is to say in the end
};

int fixing::open() {
  if (const std::string* wrong = unknownrule(given_.lint))
    return tell({.what = "there is no rule " + inquotes(*wrong)});
  std::map<identity, std::string> known;
  for (const std::string& name : given_.parameters) {
    const readresult& result = shelf_.input(name);
    if (const auto* failed = std::get_if<readfailure>(&result))
      return tell({.what = name + ": cannot be read", .why = failed->words()});
    const auto& text = std::get<textdocument>(result);
    const auto [at, fresh] = known.emplace(text.id(), name);
    if (!fresh)
      return tell(
          {.what = name + ": cannot be repaired", .why = "it is the same file as " + at->second});
    files_.push_back({name, editedtext(text.text())});
  }
  return 0;
}

patient* fixing::named(const std::string& file) {
  const auto found = std::ranges::find(files_, file, &patient::name);
  return found == files_.end() ? nullptr : &*found;
}

/// Takes the first sure repair of a finding in one of the files.
void fixing::gather(const finding& found) {
  for (const hint& each : found.hints) {
    if (!each.sure) continue;
    patient* const file = named(each.edits.front().where.file);
    if (file == nullptr) return;
    textchange change;
    for (const edit& one : each.edits)
      change.push_back({one.where.line, one.where.column, one.where.length, one.text});
    return file->changes.push_back(std::move(change));
  }
}

/// Makes the changes of a round; false if there are none.
bool fixing::applied() {
  std::size_t made = 0;
  for (patient& each : files_) {
    const std::size_t count = each.text.apply(each.changes);
    each.changes.clear();
    if (count > 0) drafts_[each.name] = each.text.text();
    made += count;
  }
  repairs_ += made;
  return made > 0;
}

int fixing::repair() {
  readsettings what = readingof(given_);
  what.drafts = &drafts_;
  for (int round = 1;; round++) {
    const keptback told;
    const auto report = makelines(told.stream(), wantscolour(stderr));
    linter rules({"", given_.lint, {}});
    std::size_t lints = 0;  // what these leave is told by lint
    runparts parts = {.checks = true};
    if (!given_.lint.empty()) parts.join = [&](run& joined) { return rules.join(joined); };
    run reading(
        [&](const finding& found) {
          gather(found);
          if (!namesrules(found.code)) return report->take(found);
          if (found.level == severity::warning) lints++;
        },
        parts);
    const bool good = reading.read(what);
    if (good && round < mostrounds && applied()) continue;
    tally left = reading.total();
    left.warnings -= lints;
    left_ = std::string(told.text()) + summary(left) + '\n';
    return left.status();
  }
}

std::string fixing::summary(const tally& left) const {
  const auto files = static_cast<std::size_t>(
      std::ranges::count_if(files_, [](const patient& each) { return each.text.changed(); }));
  std::string text = counted(repairs_, "repair");
  if (files > 0) text += " in " + counted(files, "file");
  if (left.errors + left.warnings == 0) return text + "; nothing is left";
  if (left.errors > 0) text += "; " + counted(left.errors, "error");
  if (left.warnings > 0)
    text += (left.errors > 0 ? ", " : "; ") + counted(left.warnings, "warning");
  return text + (left.errors + left.warnings == 1 ? " is left" : " are left");
}

int fixing::deliver() const {
  int status = 0;
  for (const patient& each : files_) {
    if (!each.text.changed()) continue;
    if (!given_.write)
      status = std::max(status, shownproduct(each.text.difference(each.name)));
    else
      status = std::max(status, replaced(each.name, each.text.text()));
  }
  return status;
}

}  // namespace

int fix(const request& given) {
  fixing all(given);
  if (const int status = all.open(); status != 0) return status;
  const int left = all.repair();
  const int failed = left == statusunusable ? 0 : all.deliver();
  all.telltherest();
  return std::max(left, failed);
}

}  // namespace command
