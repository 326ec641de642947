#include "lint/linter.h"

#include <algorithm>
#include <optional>

#include "text/printable.h"

namespace command {

/// What hears a run. It stands after the parts that it has, and so hears each call when they have.
class linter::joined : public listener {
 public:
  joined(run& of, const ruleset& rules) : of_(of), rules_(rules), table_(of) { startover(); }

  /// Forgets what was read after the definition.
  void startover();
  std::vector<listener*> listeners() { return {&table_, &*ignores_, &*entries_, this}; }
  void tellcomments();

  void entered(const optxv_source& source) override;
  void left(const optxv_source& source, std::int32_t error) override;
  void line(const optxv_place& where, std::string_view text) override;

 private:
  template <class Function>
  using wantedrules = std::vector<std::pair<const lintrule*, Function>>;
  template <class Function>
  wantedrules<Function> wanted() const;

  template <class Function, class Facts>
  void apply(const wantedrules<Function>& rules, const Facts& facts, const sharedline& line);
  void take(finding found);
  void checktable();
  void emit();

  run& of_;
  const ruleset& rules_;
  declaredtable table_;
  std::optional<ignores> ignores_;
  std::optional<entrygathering> entries_;
  wantedrules<tablerule> tablerules_ = wanted<tablerule>();
  wantedrules<entryrule> entryrules_ = wanted<entryrule>();
  wantedrules<leavingrule> leavingrules_ = wanted<leavingrule>();
  const lintrule* rule_ = nullptr;  ///< that is being applied
  sharedline line_;                 ///< to what stands in this line
  const telling tell_ = [this](finding found) { take(std::move(found)); };
  std::vector<std::vector<finding>> held_;  ///< of the lines that are being read, innermost last
};

template <class Function>
linter::joined::wantedrules<Function> linter::joined::wanted() const {
  wantedrules<Function> all;
  for (const lintrule& row : lintrules())
    if (const auto* find = std::get_if<Function>(&row.find);
        find != nullptr && rules_.has(row.code))
      all.emplace_back(&row, *find);
  return all;
}

void linter::joined::startover() {
  ignores_.emplace(of_);
  entries_.emplace(
      of_, table_,
      [this](const entryfacts& entry, const sharedline& line) { apply(entryrules_, entry, line); },
      [this](const leavingfacts& left) { apply(leavingrules_, left, left.line); });
  held_.clear();
}

template <class Function, class Facts>
void linter::joined::apply(const wantedrules<Function>& rules, const Facts& facts,
                           const sharedline& line) {
  line_ = line;
  for (const auto& [row, find] : rules) {
    rule_ = row;
    find(facts, tell_);
  }
}

/// A finding waits for the end of its line, where a comment may silence it.
void linter::joined::take(finding found) {
  found.level = rule_->level;
  found.code = rule_->code;
  if (!found.source) found.source = line_;
  held_.back().push_back(std::move(found));
}

void linter::joined::emit() {
  for (finding& each : held_.back())
    if (!ignores_->silences(each.code, each.where)) of_.tell(std::move(each));
  held_.back().clear();
}

void linter::joined::entered(const optxv_source&) {
  held_.emplace_back();
}

void linter::joined::line(const optxv_place&, std::string_view) {
  emit();
}

void linter::joined::left(const optxv_source& source, std::int32_t) {
  if (source.kind == optxv_source_definition) checktable();
  emit();
  held_.pop_back();
}

/// Has the rules look at the definition, and puts what they find in the order of its lines.
void linter::joined::checktable() {
  apply(tablerules_, table_, nullptr);
  std::vector<finding>& found = held_.back();
  std::ranges::stable_sort(found, {}, [](const finding& each) { return each.where.line; });
  std::string_view rest = of_.definitiontext();
  std::int64_t number = 1;
  for (finding& each : found) {
    for (; number < each.where.line && !rest.empty(); number++)
      rest.remove_prefix(std::min(rest.find('\n'), rest.size() - 1) + 1);
    each.source = std::make_shared<const std::string>(rest.substr(0, rest.find_first_of("\r\n")));
  }
}

/// A comment about rules that are not wanted may well silence something in another run.
void linter::joined::tellcomments() {
  for (const ignores::ignoredword& each : ignores_->words()) {
    const bool known = namesrules(each.word);
    const std::string_view code = known ? ignoreunused : ignoreunknown;
    if (!rules_.has(code) || (known && (each.used || !rules_.hasany(each.word)))) continue;
    const auto row = std::ranges::find(lintrules(), code, &lintrule::code);
    finding found =
        said(each.where, known               ? "nothing here breaks the rule " + inquotes(each.word)
                         : each.word.empty() ? "the comment names no rule"
                                             : "there is no rule " + inquotes(each.word));
    found.level = row->level;
    found.code = row->code;
    found.source = each.line;
    of_.tell(std::move(found));
  }
}

linter::linter(ruleset rules) : rules_(std::move(rules)) {}
linter::~linter() = default;

std::vector<listener*> linter::join(run& of) {
  if (joined_ != nullptr)
    joined_->startover();
  else
    joined_ = std::make_unique<joined>(of, rules_);
  return joined_->listeners();
}

void linter::end() {
  joined_->tellcomments();
}

}  // namespace command
