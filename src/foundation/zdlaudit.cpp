#include "foundation/zdlaudit.h"

#include <array>
#include <ctime>

#include "foundation/numtext.h"
#include "foundation/runtime.h"
#include "foundation/strutilx.h"

// The build defines the names OPTXV_BUILD_... used here: cmake/builddata.cmake.

namespace optxv {

namespace {

constexpr std::string_view systemname = "optxv";
constexpr std::string_view legalnotice = "Copyright (c) 2026 the optxv authors";
constexpr std::string_view linehead = "_OPTX:";
constexpr std::string_view linetail = ":OPTX_";
constexpr std::size_t marklength = 6;
static_assert(linehead.size() == marklength && linetail.size() == marklength);

constexpr std::array<std::string_view, 12> monthnames = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::int64_t secondsofday = 86400;
constexpr std::int32_t dayof1970 = 25568;

struct civildate {
  std::int64_t year;
  std::int64_t month;
  std::int64_t day;
};

// The Gregorian date of a POSIX time, by Hinnant's algorithm civil_from_days: years begin in March,
// so that the leap day is their last, and 400 of them have 146097 days. For times from 1970 on.
constexpr civildate dateof(std::int64_t seconds) {
  const std::int64_t days = seconds / secondsofday + 719468;  // from 1 March of year 0
  const std::int64_t era = days / 146097;
  const std::int64_t dayofera = days % 146097;
  const std::int64_t yearofera =
      (dayofera - dayofera / 1460 + dayofera / 36524 - dayofera / 146096) / 365;
  const std::int64_t dayofyear = dayofera - (365 * yearofera + yearofera / 4 - yearofera / 100);
  const std::int64_t monthfrommarch = (5 * dayofyear + 2) / 153;
  const std::int64_t month = monthfrommarch < 10 ? monthfrommarch + 3 : monthfrommarch - 9;
  return {yearofera + era * 400 + (month <= 2 ? 1 : 0), month,
          dayofyear - (153 * monthfrommarch + 2) / 5 + 1};
}

constexpr std::int64_t buildseconds = OPTXV_BUILD_EPOCH;
static_assert(buildseconds >= 0);
constexpr civildate builddate = dateof(buildseconds);

std::string_view monthname(const civildate& date) {
  return monthnames[static_cast<std::size_t>(date.month - 1)];
}

shortstring twodigits(std::int64_t n) {
  return concat(static_cast<char>('0' + n / 10 % 10), static_cast<char>('0' + n % 10));
}

void fillplaceholders(zdlrecord& record) {
  record.zdlblddat.assign("Sep 09, 9999");
  record.zdlbldcod.assign("   ");
  record.zdlsysnam = padright("Uninitialized", 16);
  record.zdlsysver.assign("000");
  record.zdlrelgold.assign("0");
  record.zdlauditline.clear();
  record.zdlauditlinelib.clear();
}

void fillbuild(zdlrecord& record) {
  record.zdlbldcpr = padright(legalnotice, 70);
  record.zdlblddat = concat(monthname(builddate), ' ', twodigits(builddate.day), ", ",
                            twodigits(builddate.year / 100), twodigits(builddate.year));
  record.zdlbldcod.assign(OPTXV_BUILD_CODE);
}

void fillrelease(zdlrecord& record) {
  record.zdlreldat =
      concat("PROD ", twodigits(builddate.day), monthname(builddate), twodigits(builddate.year));
  record.zdlrelmaj.assign(OPTXV_BUILD_MAJOR);
  record.zdlrelmin.assign(OPTXV_BUILD_MINOR);
  record.zdlrelgold.assign(OPTXV_BUILD_MAINTENANCE);
  record.zdlreljul = zdldaynumber(buildseconds);
}

void fillplatform(zdlrecord& record) {
  record.zdlrelplc.assign(OPTXV_BUILD_PLATFORM_CODE);
  record.zdlrelplt = padright(OPTXV_BUILD_PLATFORM_TEXT, 22);
}

shortstring bodyof(std::string_view line) noexcept {
  if (line.size() <= 2 * marklength) return {};
  return line.substr(marklength, line.size() - 2 * marklength);
}

void keepbody(std::string_view line, boundedstring<78>& target) noexcept {
  target = padright(bodyof(line), 78);
}

bool tagstartswith(std::string_view tag) noexcept {
  return zdldata().zdlreldat.view().substr(0, tag.size()) == tag;
}

}  // namespace

zdlrecord& zdldata() noexcept {
  // Local, so that the load step finds it made, in whatever order the sources are initialised.
  static zdlrecord record;
  return record;
}

std::int32_t zdldaynumber(std::int64_t seconds) noexcept {
  return static_cast<std::int32_t>(seconds / secondsofday) + dayof1970;
}

void initzdlaudit() {
  zdlrecord& record = zdldata();
  record.juliantoday = zdldaynumber(std::time(nullptr));
  fillplaceholders(record);
  fillbuild(record);
  fillrelease(record);
  fillplatform(record);
  record.zdlsysver = concat(record.zdlrelmaj, record.zdlrelmin);
}

shortstring zdlbuildauditline() noexcept {
  const zdlrecord& record = zdldata();
  return concat(linehead, padright(systemname, 16), ' ', twodigits(builddate.day),
                monthname(builddate), ' ', record.zdlrelmaj, '.', record.zdlrelmin, '.',
                record.zdlrelgold, ' ', record.zdlrelplc, ' ', inttostr(record.zdlreljul), '.',
                inttostr(buildseconds % secondsofday), ' ', record.zdlbldcod, ' ',
                OPTXV_BUILD_PLATFORM_TEXT, linetail);
}

shortstring zdlgetauditline() noexcept {
  const zdlrecord& record = zdldata();
  return record.zdlauditline.empty() ? record.zdlauditlinelib.view() : record.zdlauditline.view();
}

void zdlsetauditline(std::string_view line) noexcept {
  zdlrecord& record = zdldata();
  keepbody(line, record.zdlauditline);
  record.zdlsysnam = record.zdlauditline.view();
}

void zdlsetauditlinelib(std::string_view line) noexcept {
  keepbody(line, zdldata().zdlauditlinelib);
}

bool zdlauditrun() noexcept {
  if (argumentcount() < 2 || argumentvector()[1] == nullptr) return false;
  return struequal(argumentvector()[1], "AUDIT");
}

shortstring zdlgetreldat() noexcept {
  return zdldata().zdlreldat.view();
}
shortstring zdlgetbldcod() noexcept {
  return zdldata().zdlbldcod.view();
}
shortstring zdlgetblddat() noexcept {
  return zdldata().zdlblddat.view();
}
shortstring zdlgethdr() noexcept {
  return zdldata().zdlrelplt.view();
}
shortstring zdlgetcod() noexcept {
  return zdldata().zdlrelplc.view();
}
shortstring zdlgetcpr() noexcept {
  return zdldata().zdlbldcpr.view();
}

shortstring zdlgetrel() noexcept {
  const zdlrecord& record = zdldata();
  return concat(record.zdlrelmaj, '.', record.zdlrelmin);
}

shortstring zdlgetvid() noexcept {
  const zdlrecord& record = zdldata();
  return concat(record.zdlrelplc, record.zdlrelmaj, record.zdlrelmin, '-', record.zdlsysver);
}

std::int32_t zdlgetver() noexcept {
  int code = 0;
  const std::int32_t version = _Q9_Val_SPD(zdldata().zdlsysver, code);
  return code == 0 ? version : 0;
}

std::int32_t zdlgetjul() noexcept {
  return zdldata().zdlreljul;
}
std::int32_t zdlgettoday() noexcept {
  return zdldata().juliantoday;
}
bool zdlisalfa() noexcept {
  return tagstartswith("ALFA");
}
bool zdlisbeta() noexcept {
  return tagstartswith("BETA");
}

}  // namespace optxv
