// The identity of this build: one record, filled when the library loads and only read afterwards.
//
// Nothing in the library decides anything by these values. The two that leave it are the audit
// line, which optVersion gives out, and the parts of it that the written files mention.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/boundedstring.h"
#include "foundation/visibility.h"

namespace optxv {

/// The record. Texts of a fixed length are padded with blanks on the right.
struct zdlrecord {
  boundedstring<12> zdlblddat;        ///< build date, as in "Jan 02, 2006"
  boundedstring<3> zdlbldcod;         ///< build platform code
  boundedstring<70> zdlbldcpr;        ///< legal notice, padded
  boundedstring<16> zdlsysnam;        ///< name of the system, padded
  boundedstring<3> zdlsysver;         ///< digits of the major and minor release number
  boundedstring<12> zdlreldat;        ///< release tag: four letters, blank, date as in "02Jan06"
  boundedstring<2> zdlrelmaj;         ///< major release number
  boundedstring<1> zdlrelmin;         ///< minor release number
  boundedstring<1> zdlrelgold;        ///< maintenance number
  boundedstring<3> zdlrelplc;         ///< release platform code, as in "LNX"
  boundedstring<22> zdlrelplt;        ///< platform text, padded
  boundedstring<78> zdlauditline;     ///< audit line of the host program: empty, or 78 bytes
  boundedstring<78> zdlauditlinelib;  ///< audit line of the library: empty, or 78 bytes
  std::int32_t zdlreljul = 0;         ///< release date as a day number; see zdldaynumber
  std::int32_t juliantoday = 0;       ///< the day on which the library was loaded, likewise
};

/// The one record. Its members may be set by a host that links the library's parts into itself.
zdlrecord& zdldata() noexcept;

/// Fills the record: placeholders, then what the build supplies, then the day. The frame calls it
/// when the library loads; both audit lines are empty after it.
void initzdlaudit();

/// The day number of a POSIX time (seconds from 1 January 1970): day 1 is 1 January 1900. Days
/// begin at midnight UTC, so no time zone matters.
std::int32_t zdldaynumber(std::int64_t seconds) noexcept;

/// The library's own audit line as the build makes it, with the marks of six bytes at both ends:
/// name in 16 bytes, then day and month of the release, version, platform code, build day and
/// second of that day, build code, platform text.
shortstring zdlbuildauditline() noexcept;

/// The host's audit line, or the library's if the host has set none.
shortstring zdlgetauditline() noexcept;

/// Keeps the body of an audit line (all but six bytes at each end, which are not looked at) as the
/// host's line, cut or padded to 78 bytes, and its first 16 as the name of the system. A line of 12
/// bytes or fewer gives 78 blanks.
void zdlsetauditline(std::string_view line) noexcept;
/// The same for the library's line; the name of the system stays.
void zdlsetauditlinelib(std::string_view line) noexcept;

/// Whether the first argument of the program is the word AUDIT in any case. False where the
/// program's arguments are not known; platform/arguments.h says how the library gets them.
OPTXV_EXPORT bool zdlauditrun() noexcept;

shortstring zdlgetreldat() noexcept;  ///< zdlreldat
shortstring zdlgetbldcod() noexcept;  ///< zdlbldcod
shortstring zdlgetblddat() noexcept;  ///< zdlblddat
shortstring zdlgethdr() noexcept;     ///< zdlrelplt
shortstring zdlgetcod() noexcept;     ///< zdlrelplc
shortstring zdlgetcpr() noexcept;     ///< zdlbldcpr
shortstring zdlgetrel() noexcept;     ///< major, a point, minor
shortstring zdlgetvid() noexcept;     ///< platform code, major, minor, a minus sign, zdlsysver
std::int32_t zdlgetver() noexcept;    ///< the value of the digits of zdlsysver; 0 if they are none
std::int32_t zdlgetjul() noexcept;    ///< zdlreljul
std::int32_t zdlgettoday() noexcept;  ///< juliantoday
bool zdlisalfa() noexcept;            ///< whether the release tag begins with ALFA
bool zdlisbeta() noexcept;            ///< whether the release tag begins with BETA

}  // namespace optxv
