#include "foundation/zdlaudit.h"

#include <array>
#include <chrono>
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

constexpr std::int64_t buildseconds = OPTXV_BUILD_EPOCH;
static_assert(buildseconds >= 0);
constexpr std::chrono::year_month_day builddate{
    std::chrono::sys_days(std::chrono::days(buildseconds / secondsofday))};
constexpr int buildyear = static_cast<int>(builddate.year());
constexpr unsigned buildday = static_cast<unsigned>(builddate.day());
constexpr std::string_view buildmonth = monthnames[static_cast<unsigned>(builddate.month()) - 1];

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
  record.zdlblddat = concat(buildmonth, ' ', twodigits(buildday), ", ", twodigits(buildyear / 100),
                            twodigits(buildyear));
  record.zdlbldcod.assign(OPTXV_BUILD_CODE);
}

void fillrelease(zdlrecord& record) {
  record.zdlreldat = concat("PROD ", twodigits(buildday), buildmonth, twodigits(buildyear));
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
  return concat(linehead, padright(systemname, 16), ' ', twodigits(buildday), buildmonth, ' ',
                record.zdlrelmaj, '.', record.zdlrelmin, '.', record.zdlrelgold, ' ',
                record.zdlrelplc, ' ', inttostr(record.zdlreljul), '.',
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
