#include "analysis/run.h"

#include <sys/stat.h>

#include <algorithm>
#include <iterator>

namespace command {

void run::filelist::entered(const optxv_source& source) {
  identity id = given;
  struct stat status = {};
  if (source.level > 1) id = stat(source.name, &status) == 0 ? identityof(status) : identity{};
  all.push_back({source.name, source.level, source.from, id});
}

run::run(findingtaker take, const runparts& parts)
    : names_(at_, parts.symbols),
      settings_(options_.handle(), parts.origins),
      repeats_(at_, names_),
      findings_(at_, {at_, names_, trial_}, std::move(take)),
      textchecks_(at_, findings_),
      entrychecks_(at_, names_, repeats_, trial_, findings_),
      recordchecks_(at_, findings_),
      hearing_(options_.handle(), listeners(parts)) {}

/// What others build on comes first, and the messages of the library last.
std::vector<listener*> run::listeners(const runparts& parts) {
  std::vector<listener*> all = {&at_, &names_, &settings_, &files_, &textchecks_};
  if (parts.also != nullptr) all.insert(all.begin(), parts.also);
  if (parts.checks || parts.join) all.push_back(&repeats_);
  if (parts.checks) all.insert(all.end(), {&recordchecks_, &entrychecks_});
  if (parts.join) std::ranges::copy(parts.join(*this), std::back_inserter(all));
  all.push_back(&findings_);
  return all;
}

bool run::read(const readsettings& what) {
  options_.set_switch(optxv_switch_line_mode, !what.tokens);
  options_.set_switch(optxv_switch_no_bounds, what.nobounds);
  drafts_ = what.drafts;
  tokens_ = what.tokens;
  if (what.tokens) entrychecks_.settokens();
  if (!readdefinition(what)) return false;
  options_.set_switch(optxv_switch_print, false);  // standard output is for the product
  for (const std::string& file : what.parameters) readparameters(file);
  options_.set_switch(optxv_switch_print, true);
  return true;
}

void run::tell(finding found) {
  findings_.add(std::move(found));
  if (at_.idle()) findings_.flush();
}

tally run::total() const {
  tally total = findings_.total();
  total.dotoptions = options_.dot_options().size();
  total.indicators = options_.indicators().size();
  return total;
}

void run::readmade(const std::string& name, std::string_view text) {
  finish(name, options_.read_text(name, text).status);
}

void run::add(finding found) {
  findings_.add(std::move(found));
  findings_.flush();
}

void run::readdefinition(optxv::options& into) const {
  if (definition_ != nullptr) into.read_definition_text(definition_->name(), definition_->text());
}

bool run::readdefinition(const readsettings& what) {
  const std::string& file = what.definition;
  definition_ = document(file);
  if (definition_ == nullptr) return false;
  const std::string_view text = textof(*definition_);
  trial_.define(text, what.tokens);
  textchecks_.define(text);
  finish(file, options_.read_definition_text(file, text).status);
  if (names_.count() > 0) return true;
  finding found = own(ownfinding::nooption, place(file), "the definition declares no option");
  if (!what.parameters.empty())
    found.hints.push_back({"",
                           "the definition comes first, then the parameter files; are the two "
                           "swapped?"});
  findings_.add(std::move(found));
  findings_.flush();
  return false;
}

void run::readparameters(const std::string& file) {
  const textdocument* text = document(file);
  if (text == nullptr) return;
  finish(file, options_.read_text(file, textof(*text)).status);
}

/// What is to be read of a document: the draft of its name, if there is one.
std::string_view run::textof(const textdocument& document) const {
  const bool drafted = drafts_ != nullptr && drafts_->contains(document.name());
  return drafted ? drafts_->at(document.name()) : document.text();
}

/// The text of a file that the run is given; nil if it cannot be read, which is told.
const textdocument* run::document(const std::string& file) {
  findings_.total().files++;
  const readresult& result = shelf_.input(file);
  if (const auto* failure = std::get_if<readfailure>(&result)) {
    unreadable(file, failure->words());
    return nullptr;
  }
  const auto* text = &std::get<textdocument>(result);
  files_.given = text->id();
  if (text->text().empty())
    findings_.add(own(ownfinding::emptyfile, place(file), "the file is empty"));
  return text;
}

void run::unreadable(const std::string& file, const std::string& why) {
  findings_.total().unreadable++;
  findings_.add(own(ownfinding::unreadable, place(file), "cannot be read: " + why));
  findings_.flush();
}

/// After each file.
void run::finish(const std::string& file, std::int32_t error) {
  hearing_.rethrow();
  findings_.flush();
  if (error != 0) unreadable(file, optxv::systemtext(error));
  options_.clear_messages();
}

}  // namespace command
