#include "options/zmaoptions.h"

#include <array>
#include <atomic>
#include <utility>

#include "foundation/zdlaudit.h"
#include "language/listener.h"
#include "options/optionkinds.h"
#include "options/suggestions.h"

namespace optxv {

namespace {

shortstring loadpath;
char pathseparator = ':';

/// The separator by file-system type: WIN, CMS, TSO, VMS, UNIX, MAC.
constexpr std::array<char, 6> separators = {';', '/', '/', '\\', ':', '?'};

}  // namespace

void initzmaoptions(int osfiletype) {
  loadpath.clear();
  if (osfiletype >= 0 && static_cast<std::size_t>(osfiletype) < separators.size())
    pathseparator = separators[static_cast<std::size_t>(osfiletype)];
}

shortstring& dllloadpath() {
  return loadpath;
}

char charpath() {
  return pathseparator;
}

tzmaoptions::tzmaoptions() : toptionx(0, {}), dotoptionlist(makedotoptionlist(this)) {}

tzmaoptions::~tzmaoptions() = default;

std::uint64_t tzmaoptions::nextidentity() {
  static std::atomic<std::uint64_t> last{0};
  return ++last;
}

// --- The table ---------------------------------------------------------------------------------

std::int32_t tzmaoptions::addoption(std::string_view name, std::unique_ptr<toption> option) {
  toption* const entered = option.get();
  const kepttext own = entered->optname;
  const std::int32_t position =
      optionlist.enter(own.view() == name ? own : memory.keep(name), std::move(option));
  entered->position = position;
  optionindex.enternew();
  if (const auto* list = askind<tstrlistoption>(entered)) noteitems(*list);
  return position;
}

void tzmaoptions::noteitems(const tstrlistoption& list) {
  if (list.position < 0) return;
  std::set<std::int32_t>& filled = filledlists[getstrings(list.position).starts_with("--") ? 1 : 0];
  if (list.count() > 0)
    filled.insert(list.position);
  else
    filled.erase(list.position);
}

void tzmaoptions::addsynonym(std::string_view name, std::int32_t position) {
  synonymlist.addobject(name, reinterpret_cast<void*>(static_cast<std::intptr_t>(position)));
  synonymindex.enternew();
}

void tzmaoptions::addgroup(std::string_view name, std::unique_ptr<tgroupobj> group) {
  grouplist.addowned(name, std::move(group));
  groupindex.enternew();
}

std::string_view tzmaoptions::getstrings(std::int32_t position) const {
  return position >= 0 && position < getcount() ? optionlist.getname(position) : std::string_view();
}

tgroupobj* tzmaoptions::groupat(std::int32_t position) const {
  return objectof<tgroupobj>(grouplist.getobject(position));
}

toption* tzmaoptions::synonymtarget(std::int32_t position) const {
  return getobjects(synonymposition(position));
}

std::int32_t tzmaoptions::synonymposition(std::int32_t position) const {
  return static_cast<std::int32_t>(
      reinterpret_cast<std::intptr_t>(synonymlist.getobject(position)));
}

void tzmaoptions::marksynonym(std::int32_t position, deprecationmark mark, kepttext text) {
  const auto at = static_cast<std::size_t>(position);
  if (at >= markedsynonyms.size()) markedsynonyms.resize(at + 1);
  synonymmarks& own = markedsynonyms[at];
  (mark == markObsoleteSynonym ? own.obsolete : own.deprecated) = true;
  own.text = text;
}

synonymmarks tzmaoptions::marksof(std::int32_t position) const {
  const auto at = static_cast<std::size_t>(position);
  return at < markedsynonyms.size() ? markedsynonyms[at] : synonymmarks();
}

std::string_view tzmaoptions::getfilename() const {
  const std::string_view path = deffilename;
  return path.substr(path.find_last_of('/') + 1);
}

shortstring tzmaoptions::nounderscore(std::string_view name) const {
  static constexpr charset underscore("_");
  return lookupmode == lookupMinos ? replacechar(underscore, ' ', name) : shortstring(name);
}

std::string_view tzmaoptions::keeptext(std::string_view text) {
  const auto found = kepttexts.find(text);
  return found != kepttexts.end() ? *found : *kepttexts.emplace(text).first;
}

suggestions& tzmaoptions::nearnames() {
  if (!similar) similar = std::make_unique<suggestions>(*this);
  return *similar;
}

// --- Counts and switches -----------------------------------------------------------------------

std::int32_t tzmaoptions::optdotoptcount(std::int32_t& errors) const {
  errors = dotoptionerrors;
  return dotoptionlist->count();
}

std::int32_t tzmaoptions::optindicatorcount(std::int32_t& errors) const {
  errors = indicatorerrors;
  return indicatorlist ? indicatorlist->count() : 0;
}

std::int32_t tzmaoptions::opteolonlyset(std::int32_t flag) {
  const bool old = eolonly;
  eolonly = flag != 0;
  return old ? 1 : 0;
}

void tzmaoptions::optversion(shortstring& auditline) {
  auditline = zdlgetauditline();
}

}  // namespace optxv
