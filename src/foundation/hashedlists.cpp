#include "foundation/hashedlists.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <memory>
#include <new>
#include <span>
#include <typeinfo>
#include <utility>
#include <vector>

#include "foundation/numtext.h"

namespace optxv {
namespace {

// Chains, for names and reals alike.

constexpr std::int32_t smalltable = 9973;
constexpr std::int32_t largetable = 99991;
constexpr std::int32_t fullchain = 4;  // entries per chain, beyond which a larger table is tried
constexpr std::int32_t realtable = 2000;
// What a released table takes off the count of bytes, whatever its size.
constexpr std::int64_t tablesizeofrecord = 40000004;

using chains = std::span<thashnode*>;

chains chainsof(thashnode** table, std::int32_t count) noexcept {
  return {table, static_cast<std::size_t>(count)};
}

thashnode** newtable(std::int32_t count) {
  auto** const table = static_cast<thashnode**>(getmem(arraysize<thashnode*>(count)));
  std::ranges::fill(chainsof(table, count), nullptr);
  return table;
}

struct nodereleaser {
  void operator()(thashnode* node) const noexcept { freemem(node, sizeof(thashnode)); }
};
using ownednode = std::unique_ptr<thashnode, nodereleaser>;

ownednode newnode(std::int32_t index, std::uint32_t key = 0) {
  return ownednode(new (getmem(sizeof(thashnode))) thashnode{nullptr, index, key});
}

void push(thashnode*& chain, ownednode node) noexcept {
  node->fnext = chain;
  chain = node.release();
}

void freenodes(chains table) noexcept {
  for (thashnode* node : table)
    while (node != nullptr) ownednode(std::exchange(node, node->fnext)).reset();
}

/// Takes all nodes out of a table of count entries, each to the index of its entry.
std::vector<ownednode> takenodes(chains table, std::int32_t count) {
  std::vector<ownednode> nodes(static_cast<std::size_t>(count));
  for (thashnode*& chain : table) {
    while (chain != nullptr) {
      ownednode node(std::exchange(chain, chain->fnext));
      if (node->findex < count) nodes[static_cast<std::size_t>(node->findex)] = std::move(node);
    }
  }
  return nodes;
}

/// The first entry of a chain with the key that the test accepts, or -1.
template <class Test>
std::int32_t findin(const thashnode* node, std::uint32_t key, Test test) {
  for (; node != nullptr; node = node->fnext)
    if (node->fkey == key && test(node->findex)) return node->findex;
  return -1;
}

std::int32_t lengthof(const thashnode* node) noexcept {
  std::int32_t length = 0;
  for (; node != nullptr; node = node->fnext) ++length;
  return length;
}

void statsof(chains table, std::int32_t divisor, std::int32_t& min, std::int32_t& max,
             std::int32_t& avg) noexcept {
  min = std::numeric_limits<std::int32_t>::max();
  max = 0;
  double total = 0;
  for (const thashnode* node : table) {
    const std::int32_t length = lengthof(node);
    min = std::min(min, length);
    max = std::max(max, length);
    total += length;
  }
  avg = static_cast<std::int32_t>(round(total / divisor));
}

}  // namespace

// txhashedstringlist

int txhashedstringlist::compare(std::int32_t i, std::int32_t j) {
  return pstrucmp(flist[i].fname, flist[j].fname);
}

bool txhashedstringlist::equaltoentry(std::string_view s, std::int32_t i) const {
  return ukepttextequals(flist[i].fname, keptpart(s));
}

namespace {

std::uint32_t hashof(std::string_view s) noexcept {
  constexpr std::uint32_t factor = 211;
  std::uint32_t h = 0;
  for (const char c : keptpart(s)) h = h * factor + static_cast<unsigned char>(upcase(c));
  return h & 0x7FFFFFFF;
}

/// By two constants, which costs less than a division.
std::int32_t chainof(std::uint32_t hash, std::int32_t count) noexcept {
  return static_cast<std::int32_t>(count == smalltable ? hash % smalltable : hash % largetable);
}

}  // namespace

std::int32_t txhashedstringlist::hashvalue(std::string_view s) const {
  return chainof(hashof(s), fhashcount);
}

/// Where a name belongs: its chain, and the key that an equal name has as well.
struct txhashedstringlist::place {
  std::int32_t chain;
  std::uint32_t key;
};

/// In the classes of this module equal names have equal hashes, and the hash as the key spares a
/// look at most of the names of a chain. What a descendant takes for equal is unknown.
txhashedstringlist::place txhashedstringlist::placeof(std::string_view s) const {
  const std::type_info& type = typeid(*this);
  if (type != typeid(txstrpool) && type != typeid(txhashedstringlist)) return {hashvalue(s), 0};
  const std::uint32_t hash = hashof(s);
  return {chainof(hash, fhashcount), hash};
}

std::int32_t txhashedstringlist::findat(const place& at, std::string_view s) const {
  return findin(fhashtable[at.chain], at.key, [&](std::int32_t i) { return equaltoentry(s, i); });
}

std::int32_t txhashedstringlist::addobject(std::string_view s, void* obj) {
  if (fhashtable == nullptr || fcount > std::int64_t{fullchain} * fhashcount) sethashsize(fcount);
  s = keptpart(s);
  const place at = placeof(s);
  if (const std::int32_t found = findat(at, s); found >= 0) return found;
  const std::int32_t index = fcount;
  ownednode node = newnode(index, at.key);  // first: without memory the list stays as it was
  insertitem(index, s, obj);
  push(fhashtable[at.chain], std::move(node));
  return index;
}

std::int32_t txhashedstringlist::indexof(std::string_view s) {
  if (fhashtable == nullptr) sethashsize(fcount);
  s = keptpart(s);
  return findat(placeof(s), s);
}

namespace {

/// Drops a table that was not finished.
class tableguard {
 public:
  explicit tableguard(txhashedstringlist* list) noexcept : list_(list) {}
  tableguard(const tableguard&) = delete;
  tableguard& operator=(const tableguard&) = delete;
  ~tableguard() {
    if (list_ != nullptr) list_->clearhashlist();
  }
  void dismiss() noexcept { list_ = nullptr; }

 private:
  txhashedstringlist* list_;
};

}  // namespace

void txhashedstringlist::sethashsize(std::int32_t n) {
  const std::int32_t size = n <= smalltable ? smalltable : largetable;
  if (fhashcount == size) return;
  // A node serves its entry again: it lies beside the name that was stored with it, where a search
  // looks next.
  std::vector<ownednode> nodes = takenodes(chainsof(fhashtable, fhashcount), fcount);
  clearhashlist();
  fhashtable = newtable(size);
  fhashcount = size;
  tableguard guard(this);
  for (std::int32_t i = 0; i < fcount; ++i) {
    const place at = placeof(getname(i));
    ownednode node = std::move(nodes[static_cast<std::size_t>(i)]);
    if (!node) node = newnode(i);
    node->fkey = at.key;
    push(fhashtable[at.chain], std::move(node));
  }
  guard.dismiss();
}

void txhashedstringlist::clearhashlist() noexcept {
  if (fhashtable == nullptr) return;
  freenodes(chainsof(fhashtable, fhashcount));
  freemem(std::exchange(fhashtable, nullptr), tablesizeofrecord);
  fhashcount = 0;
}

void txhashedstringlist::sort() {
  clearhashlist();
  sortn(fcount);
}

void txhashedstringlist::clear() {
  clearhashlist();
  txcustomstringlist::clear();
}

void txhashedstringlist::hashstats(std::int32_t& min, std::int32_t& max,
                                   std::int32_t& avg) const noexcept {
  statsof(chainsof(fhashtable, fhashcount), fhashcount + 1, min, max, avg);
}

// txstrpool

int txstrpool::compare(std::int32_t i, std::int32_t j) {
  return pstrcmp(flist[i].fname, flist[j].fname);
}

bool txstrpool::equaltoentry(std::string_view s, std::int32_t i) const {
  return kepttextequals(flist[i].fname, keptpart(s));
}

// txconstpool

txconstpool::txconstpool() : fhashtable(newtable(realtable)) {}

txconstpool::~txconstpool() {
  freenodes(chainsof(fhashtable, realtable));
  freemem(fhashtable, arraysize<thashnode*>(realtable));
  freemem(fvalues, arraysize<double>(fcapacity));
}

void txconstpool::grow() {
  setcapacity(growncapacity(fcapacity));
}

std::int32_t txconstpool::hashvalue(double x) noexcept {
  const auto words = std::bit_cast<std::array<std::uint16_t, 4>>(x);
  return (words[0] + words[1] + words[2] + words[3]) % realtable;
}

std::int32_t txconstpool::add(double x) {
  thashnode*& chain = fhashtable[hashvalue(x)];
  const std::int32_t found = findin(chain, 0, [&](std::int32_t i) { return fvalues[i] == x; });
  if (found >= 0) return found;
  ownednode node = newnode(fcount);  // first: without memory for it the pool stays as it was
  if (fcount == fcapacity) grow();
  fvalues[fcount] = x;
  push(chain, std::move(node));
  return fcount++;
}

void txconstpool::setcapacity(std::int32_t n) {
  if (n < fcount) return;
  double* const old = std::exchange(fvalues, nullptr);
  fvalues =
      static_cast<double*>(reallocmem(old, arraysize<double>(fcapacity), arraysize<double>(n)));
  fcapacity = n;
}

void txconstpool::hashstats(std::int32_t& min, std::int32_t& max,
                            std::int32_t& avg) const noexcept {
  statsof(chainsof(fhashtable, realtable - 1), realtable, min, max, avg);
}

}  // namespace optxv
