#include "layout/grouporder.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

namespace command {
namespace {

using kind = entryrow::kind;

std::string headingof(std::string_view group) {
  return "* ---- " + std::string(group) + " ----";
}

/// An entry with what stands above it and belongs to it, and what goes on below it.
struct block {
  std::vector<entryrow> above;
  std::vector<entryrow> rows;
  std::size_t group = 0;
};

/// The groups of a definition, by their order.
class grouplist {
 public:
  explicit grouplist(const optxv::options& options);

  /// The place of the group of an option; that after the last one for an option without a group.
  std::size_t of(std::int32_t option) const;
  /// Whether an entry of the option sets it and nothing else.
  bool movable(std::int32_t option) const;
  const std::string& heading(std::size_t group) const { return headings_[group]; }
  bool isheading(const entryrow& row) const {
    return row.what == kind::remark && std::ranges::find(headings_, row.comment) != headings_.end();
  }
  bool empty() const { return headings_.size() == 1; }

 private:
  optxv_option infoof(std::int32_t option) const {
    optxv_option info{};
    optxv_option_info(handle_, option, &info);
    return info;
  }

  optxv_handle handle_;
  std::vector<std::string> headings_;
  std::unordered_map<std::int32_t, std::size_t> places_;
};

grouplist::grouplist(const optxv::options& options) : handle_(options.handle()) {
  const std::int32_t count = optxv_group_count(handle_);
  for (std::int32_t position = 1; position <= count; position++) {
    optxv_group group{};
    optxv_group_info(handle_, position, &group);
    places_.try_emplace(group.number, headings_.size());
    headings_.push_back(headingof({group.help.bytes, group.help.size}));
  }
  headings_.push_back(headingof("Without a group"));
}

std::size_t grouplist::of(std::int32_t option) const {
  const auto found = places_.find(infoof(option).group);
  return found == places_.end() ? headings_.size() - 1 : found->second;
}

bool grouplist::movable(std::int32_t option) const {
  if (option == 0) return false;
  const optxv_option info = infoof(option);
  return info.runtime == 0 && info.kind != optxv_kind_multilist && info.kind != optxv_kind_macro &&
         info.kind != optxv_kind_immediate;
}

class sorting {
 public:
  sorting(entryrows& rows, const grouplist& groups) : rows_(rows), groups_(groups) {}

  std::vector<entryrow> sorted();

 private:
  void takehead();
  void take(const entryrow& row);
  void flush();
  void write(const block& each);

  entryrows& rows_;
  const grouplist& groups_;
  std::size_t next_ = 0;
  std::vector<entryrow> result_;
  std::vector<entryrow> above_;  ///< comments and empty lines whose entry is to come
  std::vector<block> run_;       ///< entries that may change places
};

/// A comment at the start that is parted from what follows. A heading is none, since it was written
/// here.
void sorting::takehead() {
  const std::vector<entryrow>& rows = rows_.rows();
  std::size_t end = 0;
  while (end < rows.size() && rows[end].what == kind::remark) end++;
  const bool parted = end > 0 && end < rows.size() && rows[end].what == kind::blank;
  const auto stop = rows.begin() + static_cast<std::ptrdiff_t>(end);
  if (!parted ||
      std::any_of(rows.begin(), stop, [&](const entryrow& row) { return groups_.isheading(row); }))
    return;
  result_.assign(rows.begin(), stop);
  next_ = end;
}

void sorting::take(const entryrow& row) {
  if (row.what == kind::further) {
    (run_.empty() ? result_ : run_.back().rows).push_back(row);
  } else if (row.what == kind::blank || row.what == kind::remark) {
    above_.push_back(row);
  } else if (row.what == kind::one && row.form == entryform::plain && groups_.movable(row.option)) {
    run_.push_back({std::move(above_), {row}, groups_.of(row.option)});
    above_.clear();
  } else {
    const bool sorted = !run_.empty();
    flush();
    above_.push_back(row);
    if (sorted && above_.front().what != kind::blank)
      result_.push_back({.what = kind::blank, .ending = result_.back().ending});
    result_.insert(result_.end(), above_.begin(), above_.end());
    above_.clear();
  }
}

/// Writes what stands above an entry, but neither headings nor the empty lines in front.
void sorting::write(const block& each) {
  bool begun = false;
  for (const entryrow& row : each.above) {
    if (groups_.isheading(row) || (row.what == kind::blank && !begun)) continue;
    begun = true;
    result_.push_back(row);
  }
  result_.insert(result_.end(), each.rows.begin(), each.rows.end());
}

/// Writes the entries that may change places.
void sorting::flush() {
  std::ranges::stable_sort(run_, {}, &block::group);
  const block* before = nullptr;
  for (const block& each : run_) {
    if (before == nullptr || before->group != each.group) {
      const std::string_view ending = innerending(each.rows.front().ending);
      if (!result_.empty() && result_.back().what != kind::blank)
        result_.push_back({.what = kind::blank, .ending = ending});
      result_.push_back({.what = kind::remark,
                         .comment = rows_.keep(groups_.heading(each.group)),
                         .ending = ending});
    }
    write(each);
    before = &each;
  }
  run_.clear();
}

std::vector<entryrow> sorting::sorted() {
  takehead();
  const std::vector<entryrow>& rows = rows_.rows();
  while (next_ < rows.size()) take(rows[next_++]);
  flush();
  result_.insert(result_.end(), above_.begin(), above_.end());
  // The last line may be another one now.
  if (rows.empty() || rows.back().ending.ends_with('\n')) return std::move(result_);
  for (entryrow& row : result_) row.ending = innerending(row.ending);
  result_.back().ending = rows.back().ending;
  return std::move(result_);
}

}  // namespace

void sortbygroup(entryrows& rows, const optxv::options& options) {
  const grouplist groups(options);
  if (!groups.empty()) rows.rows() = sorting(rows, groups).sorted();
}

}  // namespace command
