#include "server/project.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "server/uris.h"
#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view definitionlanguage = "optxv-definition";
constexpr std::string_view parameterslanguage = "optxv-parameters";
constexpr std::size_t mosttables = 8;  ///< that are kept
constexpr std::size_t mostlines = 64;  ///< texts of files that are not open

std::string folderof(const std::string& path) {
  return fs::path(path).parent_path().string();
}

/// Readers open nested files from there. A folder that is gone has none.
void workin(const std::string& folder) {
  std::error_code ignored;
  fs::current_path(folder, ignored);
}

/// The files of a binding. What cannot be listed fails the request: it would miss files.
std::vector<std::string> boundby(const bindings& all, const binding& of) {
  std::error_code fault;
  std::vector<std::string> found = all.filesof(of, fault);
  if (fault) throw fs::filesystem_error("cannot be listed", all.folder, fault);
  return found;
}

/// The only definition in a folder; empty if there is none, or more than one.
std::string onlydefinition(const std::string& folder) {
  std::string found;
  std::error_code fault;
  for (fs::directory_iterator at(folder, fs::directory_options::skip_permission_denied, fault), end;
       !fault && at != end; at.increment(fault)) {
    if (at->path().extension() != ".def") continue;
    if (!found.empty()) return {};
    found = at->path().string();
  }
  return fault ? std::string() : found;
}

/// The definition that a comment in the first lines names: `* optxv: definition solver.def`.
std::string commenteddefinition(std::string_view text) {
  constexpr int firstlines = 10;
  for (int line = 0; line < firstlines && !text.empty(); line++) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view rest = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (!rest.starts_with('*')) continue;
    rest.remove_prefix(1);
    if (nextword(rest) != "optxv:" || nextword(rest) != "definition") continue;
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
    return std::string(rest.substr(0, rest.find_last_not_of(" \t\r") + 1));
  }
  return {};
}

}  // namespace

// --- Texts

std::string project::stampof(const std::string& path) const {
  if (const buffer* document = open_.find(path)) return "b" + std::to_string(document->edition);
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0) return "none";
  return "d" + std::to_string(status.st_ino) + ' ' + std::to_string(status.st_size) + ' ' +
         std::to_string(status.st_mtim.tv_sec) + ' ' + std::to_string(status.st_mtim.tv_nsec);
}

/// What is no regular file is not read: it may have no end, or never begin.
currenttext project::textof(const std::string& path) const {
  currenttext result{.stamp = stampof(path)};
  if (const buffer* document = open_.find(path)) {
    result.text.emplace(path, document->text.text());
    return result;
  }
  std::error_code ignored;  // reading it tells why
  const fs::file_status status = fs::status(path, ignored);
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    result.failure = "it is no regular file";
    return result;
  }
  const readresult read = textdocument::read(path);
  if (const auto* failed = std::get_if<readfailure>(&read))
    result.failure = failed->words();
  else
    result.text = std::get<textdocument>(read);
  return result;
}

const linedtext& project::linesof(const std::string& path) {
  if (const buffer* document = open_.find(path)) return document->text;
  const std::string stamp = stampof(path);
  if (const auto known = lines_.find(path); known != lines_.end() && known->second.stamp == stamp)
    return known->second.text;
  if (lines_.size() >= mostlines) lines_.clear();
  const currenttext now = textof(path);
  lines& made = lines_[path];
  made = {stamp, linedtext(now.text ? std::string(now.text->text()) : std::string())};
  return made.text;
}

// --- Roles

const bindings* project::nearest(const std::string& folder, std::string* file) {
  const auto path = nearestbindings(folder);
  if (!path) return nullptr;
  if (file != nullptr) *file = *path;
  auto& known = bindings_[*path];
  const std::string stamp = stampof(*path);
  if (known.stamp != stamp) {
    const currenttext now = textof(*path);
    known.stamp = stamp;
    if (now.text)
      known.said = parsebindings(now.text->text(), folderof(*path));
    else
      known.said = unreadablebindings(now.failure);
    if (auto* fault = std::get_if<finding>(&known.said)) fault->where.file = *path;
  }
  return std::get_if<bindings>(&known.said);
}

std::optional<std::pair<std::string, finding>> project::bindingsfault(const std::string& path) {
  std::string file;
  if (nearest(folderof(path), &file) != nullptr || file.empty()) return std::nullopt;
  return std::pair(file, std::get<finding>(bindings_[file].said));
}

role project::bound(const bindings& by, const std::string& path, const std::string& language,
                    role::source from) const {
  const binding* asdefinition = language == parameterslanguage ? nullptr : by.ofdefinition(path);
  const binding* found = asdefinition != nullptr          ? asdefinition
                         : language == definitionlanguage ? nullptr
                                                          : by.offile(path);
  if (found == nullptr) return {};
  return {.from = from,
          .isdefinition = asdefinition != nullptr,
          .definition = pathin(by.folder, found->definition),
          .folder = by.folder,
          .tokens = found->tokens,
          .lint = by.lint || settings_.lint,
          .inlayhints = by.inlayhints || settings_.inlayhints};
}

role project::findrole(const std::string& path) {
  const buffer* document = open_.find(path);
  const std::string language = document == nullptr ? std::string() : document->language;
  const std::string folder = path.starts_with('/') ? folderof(path) : settings_.folder;
  const bindings* said = path.starts_with('/') ? nearest(folder) : nullptr;
  if (said != nullptr)
    if (role found = bound(*said, path, language, role::source::bindings); found.known())
      return found;
  if (role found = bound(settings_, path, language, role::source::settings); found.known())
    return found;
  role alone{.isdefinition = language == definitionlanguage,
             .definition = path,
             .folder = said != nullptr ? said->folder : folder,
             .lint = settings_.lint || (said != nullptr && said->lint),
             .inlayhints = settings_.inlayhints || (said != nullptr && said->inlayhints)};
  if (alone.isdefinition) alone.from = role::source::language;
  if (alone.isdefinition || language != parameterslanguage) return alone;
  if (alone.definition = onlydefinition(folder); !alone.definition.empty()) {
    alone.from = role::source::folder;
  } else if (const std::string name = commenteddefinition(document->text.text()); !name.empty()) {
    alone.from = role::source::comment;
    alone.definition = pathin(folder, name);
  }
  return alone;
}

/// A role that the text itself may change is found each time.
const role& project::roleof(const std::string& path) {
  const auto known = roles_.find(path);
  const bool settled =
      known != roles_.end() && known->second.known() && known->second.from != role::source::comment;
  if (settled) return known->second;
  return roles_.insert_or_assign(path, findrole(path)).first->second;
}

void project::closed(const std::string& path) {
  wanted_.erase(path);
  forget();
}

// --- Reading

/// Nested files come from the client if they are open there. What is no regular file is taken for
/// an empty one.
std::optional<std::string_view> project::opening(const char* name) {
  if (const buffer* document = open_.find(pathin(folder_, name))) return document->text.text();
  struct stat status = {};
  const bool other = *name == 0 || (stat(name, &status) == 0 && !S_ISREG(status.st_mode));
  return other ? std::optional<std::string_view>(empty_) : std::nullopt;
}

std::string project::pathof(const kepttable& table, const std::string& name) {
  return pathin(table.folder, name);
}

kepttable& project::definition(const role& of) {
  const std::string key =
      of.folder + '\n' + of.definition + (of.tokens ? "\n1" : "\n0") + (of.lint ? "1" : "0");
  if (tables_.size() >= mosttables && !tables_.contains(key)) tables_.clear();
  kepttable& table = tables_[key];
  if (table.path.empty()) {
    table.path = of.definition;
    table.folder = of.folder;
    table.tokens = of.tokens;
    table.lint = of.lint;
    table.name = namein(of.folder, of.definition);
  }
  if (table.stamp != stampof(of.definition)) readdefinition(table, textof(of.definition));
  return table;
}

void project::readdefinition(kepttable& table, const currenttext& text) {
  table.stamp = text.stamp;
  table.findings.clear();
  table.marks.clear();
  table.help.reset();
  table.facts = {};
  table.parameters.clear();
  table.good = false;
  table.kept.reset();
  table.rules.reset();
  if (table.lint) table.rules.emplace(ruleset("DP", {}, {}));
  table.listening = std::make_unique<marklist>();
  table.sink = &table.findings;
  if (!text.text) {
    table.findings.push_back(
        own(ownfinding::unreadable, place(table.name), "cannot be read: " + text.failure));
    return;
  }
  folder_ = table.folder;
  table.kept = std::make_unique<run>(
      [sink = &table.sink](const finding& found) { (*sink)->push_back(found); },
      runparts{.checks = true, .join = [this, &table](run& joined) {
                 std::vector<listener*> all{table.listening.get(), this};
                 if (table.rules)
                   std::ranges::move(table.rules->join(joined), std::back_inserter(all));
                 return all;
               }});
  workin(table.folder);
  table.good = table.kept->readdefinition(text.text->named(table.name), table.tokens);
  if (table.rules) table.rules->end();
  table.listening->sort();
  table.marks = table.listening->of(table.name);
  table.facts =
      optxv::describe(*static_cast<const optxv::tzmaoptions*>(table.kept->options().handle()));
  table.help.emplace(table.facts, 0);
}

/// The stamps of a parameter text and of all that it took when it was read last.
std::string project::stampwith(const std::string& path, const std::string& own) {
  std::string result = own;
  for (const std::string& each : wanted_[path]) result += '\n' + each + ' ' + stampof(each);
  return result;
}

std::string project::stampofall(const std::string& path) {
  const role& found = roleof(path);
  const std::string whose = std::to_string(static_cast<int>(found.from)) + found.definition + '\n' +
                            found.folder + (found.tokens ? "\n1" : "\n0");
  std::string file;
  nearest(folderof(path), &file);
  return stampwith(path, stampof(path)) + '\n' + whose + '\n' +
         (found.known() ? stampof(found.definition) : "") + '\n' +
         (file.empty() ? "" : stampof(file));
}

kepttable& project::parameters(const std::string& path, const role& of) {
  kepttable& table = definition(of);
  if (table.parameters == path && table.parametersstamp == stampwith(path, stampof(path)))
    return table;
  readparameters(table, path, textof(path));
  return table;
}

void project::readparameters(kepttable& table, const std::string& path, const currenttext& text) {
  const std::string name = namein(table.folder, path);
  table.parameters = path;
  table.parametersfindings.clear();
  table.parametersmarks.clear();
  wanted_[path].clear();
  table.parametersstamp = text.stamp;
  const auto unreadable = [&](const std::string& words) {
    table.parametersfindings.push_back(own(ownfinding::unreadable, place(name), words));
  };
  if (!text.text) return unreadable("cannot be read: " + text.failure);
  if (!table.kept) return unreadable("the definition " + inquotes(table.name) + " cannot be read");
  if (!table.good) return;
  folder_ = table.folder;
  workin(table.folder);
  table.listening->clear();
  table.sink = &table.parametersfindings;
  const textdocument named = text.text->named(name);
  if (!table.kept->readagain(named)) {
    readdefinition(table, textof(table.path));
    return readparameters(table, path, text);
  }
  if (table.rules) table.rules->end();
  table.parametersmarks = *table.listening;
  table.parametersmarks.sort();
  for (const std::string& each : table.parametersmarks.wanted())
    wanted_[path].insert(pathin(table.folder, each));
  table.parametersstamp = stampwith(path, text.stamp);
}

std::vector<std::string> project::filesof(const role& of) {
  std::set<std::string> all;
  for (const bindings* each : {nearest(folderof(of.definition)), &std::as_const(settings_)})
    if (each != nullptr && !each->folder.empty())
      for (const binding& row : each->all)
        if (pathin(each->folder, row.definition) == of.definition)
          for (const std::string& name : boundby(*each, row))
            all.insert(pathin(each->folder, name));
  for (const auto& [path, document] : open_.all())
    if (const role& found = roleof(path);
        found.known() && !found.isdefinition && found.definition == of.definition)
      all.insert(path);
  return {all.begin(), all.end()};
}

}  // namespace command
