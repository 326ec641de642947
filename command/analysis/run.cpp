#include "analysis/run.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace command {

void run::filelist::entered(const optxv_source& source) {
  enteredfile entered{source.name, source.level, source.from, given};
  if (source.level > 1) {
    struct stat status = {};
    const bool known = stat(source.name, &status) == 0;
    entered.id = known ? identityof(status) : identity{};
    entered.unknown = known || errno == ENOENT || errno == ENOTDIR ? 0 : errno;
  }
  all.push_back(std::move(entered));
}

run::readparts::readparts(run& of)
    : values(of.options_.handle(), of.asked_.origins),
      again(of.at_, of.names_),
      findings(of.at_, {of.at_, of.names_, of.trial_}, of.take_),
      texts(of.at_, findings),
      entries(of.at_, of.names_, again, of.trial_, findings),
      records(of.at_, findings),
      heard(of.options_.handle(), listeners(of)) {
  if (of.tokens_) entries.settokens();
}

/// What others build on comes first, and the messages of the library last.
std::vector<listener*> run::readparts::listeners(run& of) {
  const runparts& parts = of.asked_;
  std::vector<listener*> all = {&of.at_, &of.names_, &values, &files, &texts};
  if (parts.also != nullptr) all.insert(all.begin(), parts.also);
  if (parts.checks || parts.join) all.push_back(&again);
  if (parts.checks) all.insert(all.end(), {&records, &entries});
  if (parts.join) std::ranges::copy(parts.join(of), std::back_inserter(all));
  all.push_back(&findings);
  return all;
}

run::run(findingtaker take, const runparts& parts)
    : take_(std::move(take)),
      asked_(parts),
      names_(at_, parts.symbols),
      parts_(std::in_place, *this) {}

void run::setswitches(bool tokens, bool nobounds) {
  tokens_ = tokens;
  nobounds_ = nobounds;
  options_.set_switch(optxv_switch_line_mode, !tokens);
  options_.set_switch(optxv_switch_no_bounds, nobounds);
}

bool run::read(const readsettings& what) {
  setswitches(what.tokens, what.nobounds);
  drafts_ = what.drafts;
  if (what.tokens) parts_->entries.settokens();
  if (!readdefinition(what)) return false;
  options_.set_switch(optxv_switch_print, false);  // standard output is for the product
  for (const std::string& file : what.parameters) readparameters(file);
  options_.set_switch(optxv_switch_print, true);
  return true;
}

void run::tell(finding found) {
  parts_->findings.add(std::move(found));
  if (at_.idle()) parts_->findings.flush();
}

void run::readmade(const std::string& name, std::string_view text) {
  finish(name, options_.read_text(name, text).status);
}

bool run::readdefinition(const textdocument& definition, bool tokens, bool nobounds) {
  setswitches(tokens, nobounds);
  if (tokens) parts_->entries.settokens();
  begin(definition);
  if (!take(definition, tokens)) return telluseless(false), false;
  declared_ = static_cast<std::int32_t>(options_.table().size());
  start_ = options_.take_snapshot();
  return true;
}

/// A list that parameter text makes stays in the table for good.
constexpr std::int32_t mostlists = 250;

bool run::readagain(const textdocument& parameters) {
  if (static_cast<std::int32_t>(options_.table().size()) > declared_ + mostlists) return false;
  startover();
  begin(parameters);
  options_.set_switch(optxv_switch_print, false);
  readmade(parameters.name(), parameters.text());
  return true;
}

/// Makes everything as it was after the definition was read.
void run::startover() {
  options_.restore(*start_);
  setswitches(tokens_, nobounds_);
  at_ = reading();
  names_.forgetuses();
  parts_.reset();  // a handle has one hearing at a time
  parts_.emplace(*this);
}

tally run::total() const {
  tally total = parts_->findings.total();
  total.dotoptions = options_.dot_options().size();
  total.indicators = options_.indicators().size();
  return total;
}

void run::readdefinition(optxv::options& into) const {
  if (definition_) into.read_definition_text(definition_->name(), definition_->text());
}

bool run::readdefinition(const readsettings& what) {
  const textdocument* const text = document(what.definition);
  if (text == nullptr) return false;
  if (take(drafted(*text), what.tokens)) return true;
  telluseless(!what.parameters.empty());
  return false;
}

/// Reads the definition; false if it declares no option.
bool run::take(const textdocument& definition, bool tokens) {
  definition_ = definition;
  trial_.define(definition.text(), tokens);
  parts_->texts.define(definition.text());
  finish(definition.name(),
         options_.read_definition_text(definition.name(), definition.text()).status);
  return names_.count() > 0;
}

void run::telluseless(bool swapped) {
  finding found =
      own(ownfinding::nooption, place(definition_->name()), "the definition declares no option");
  if (swapped)
    found.hints.push_back({"",
                           "the definition comes first, then the parameter files; are the two "
                           "swapped?"});
  parts_->findings.add(std::move(found));
  parts_->findings.flush();
}

void run::readparameters(const std::string& file) {
  const textdocument* text = document(file);
  if (text == nullptr) return;
  finish(file, options_.read_text(file, drafted(*text).text()).status);
}

/// What is to be read of a document: the draft of its name, if there is one.
textdocument run::drafted(const textdocument& document) const {
  if (drafts_ == nullptr || !drafts_->contains(document.name())) return document;
  return {document.name(), drafts_->at(document.name())};
}

/// The text of a file that the run is given; nil if it cannot be read, which is told.
const textdocument* run::document(const std::string& file) {
  const readresult& result = shelf_.input(file);
  if (const auto* failure = std::get_if<readfailure>(&result)) {
    parts_->findings.total().files++;
    unreadable(file, failure->words());
    return nullptr;
  }
  const auto* text = &std::get<textdocument>(result);
  begin(*text);
  return text;
}

/// Before each file.
void run::begin(const textdocument& text) {
  collector& findings = parts_->findings;
  findings.total().files++;
  parts_->files.given = text.id();
  if (text.text().empty())
    findings.add(own(ownfinding::emptyfile, place(text.name()), "the file is empty"));
}

void run::unreadable(const std::string& file, const std::string& why) {
  collector& findings = parts_->findings;
  findings.total().unreadable++;
  findings.add(own(ownfinding::unreadable, place(file), "cannot be read: " + why));
  findings.flush();
}

/// After each file.
void run::finish(const std::string& file, std::int32_t error) {
  parts_->heard.rethrow();
  parts_->findings.flush();
  if (error != 0) unreadable(file, optxv::systemtext(error));
  options_.clear_messages();
}

}  // namespace command
