// The units that options do not need: the stores beside a std::map, the pool of memory beside a
// list of what it gave out, growing texts beside std::string, and a listing, whose lines keep their
// margin. The first byte chooses the unit; the rest are choices.
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "foundation/runtime.h"
#include "foundation/textfile.h"
#include "listing/dynstr.h"
#include "listing/zmaheap.h"
#include "listing/zmalist.h"
#include "picker.h"
#include "stores/densestore.h"
#include "stores/hashedstore.h"
#include "stores/sparsestore.h"
#include "stores/tablestore.h"
#include "support.h"

namespace optxv::fuzz {
namespace {

// --- The stores

using recordkey = std::vector<std::int32_t>;
using records = std::map<recordkey, std::string>;

/// A store, and the records that it should have.
class twins {
 public:
  explicit twins(picker& from)
      : kind_(from.below(3)),
        dimension_(1 + static_cast<std::int32_t>(from.below(4))),
        datasize_(sizes[from.below(sizes.size())]),
        default_(static_cast<std::size_t>(datasize_), '\0'),
        store_(made()) {
    renew();
  }

  void step(picker& from) {
    switch (from.below(8)) {
      case 0:
        return assign(from);
      case 1:
        return load(from);
      case 2:
        return insert(from);
      case 3:
        return read();
      case 4:
        return clear();
      default:
        return search(keyof(from));
    }
  }
  /// Reads all; and once in a while the dense store of the same records.
  void finish() {
    read();
    dense();
    demand(store_->memoryused() >= 0, "memory is counted");
  }

 private:
  static constexpr std::array<std::int32_t, 5> sizes = {8, 0, 1, 13, 300};

  std::unique_ptr<tzemadatastore> made() const {
    const void* nothing = datasize_ > 0 ? default_.data() : nullptr;
    if (kind_ == 0) return std::make_unique<tzemadatatable>(dimension_, datasize_, nothing);
    if (kind_ == 1) return std::make_unique<tzemadatasparse>(dimension_, datasize_, nothing);
    return std::make_unique<tzemadatahashed>(dimension_, datasize_, nothing);
  }
  void renew() {
    searcher_.reset(store_->createsearcher());
    searcher_->startsearch();
  }
  /// Few different integers, so that keys meet, and the two ends.
  recordkey keyof(picker& from) const {
    recordkey key;
    for (std::int32_t i = 0; i < dimension_; i++) {
      const unsigned each = from.byte();
      key.push_back(each < 250   ? static_cast<std::int32_t>(each % 60)
                    : each < 252 ? INT32_MAX
                    : each < 254 ? INT32_MIN
                                 : -1);
    }
    return key;
  }
  std::string dataof(picker& from) const {
    return std::string(default_.size(), static_cast<char>(from.below(4)));
  }
  /// Adds a record; the hashed store takes none after a read that sorted it, and says so.
  template <class Add>
  void adding(const recordkey& key, const std::string& data, Add add) {
    try {
      add();
    } catch (const eassertionfailed&) {
      return demand(kind_ == 2 && !wanted_.contains(key), "only a list that was sorted refuses");
    }
    wanted_[key] = data;
  }

  void assign(picker& from) {
    store_->startassign();
    for (unsigned count = from.below(12); count > 0; count--) {
      const recordkey key = keyof(from);
      const std::string data = dataof(from);
      if (data == default_ && !wanted_.contains(key) && datasize_ > 0) {
        store_->assignrecord(key.data(), data.data());
        continue;
      }
      adding(key, data, [&] { store_->assignrecord(key.data(), data.data()); });
    }
    store_->endassign();
    if (store_->defaulted() || datasize_ > 0)
      std::erase_if(wanted_, [&](const auto& each) { return each.second == default_; });
    renew();
  }
  /// In ascending order of keys, as loads are.
  void load(picker& from) {
    const recordkey key = keyof(from);
    if (!wanted_.empty() && key <= wanted_.rbegin()->first) return;
    const std::string data = dataof(from);
    if (data == default_) return;
    adding(key, data, [&] { store_->loadrecord(key.data(), data.data()); });
    renew();
  }
  void insert(picker& from) {
    const recordkey key = keyof(from);
    const std::string data = dataof(from);
    void* found = nullptr;
    if (data == default_ || searcher_->search(key.data(), found)) return;
    adding(key, data, [&] { store_->insertrecord(searcher_.get(), key.data(), data.data()); });
  }
  void search(const recordkey& key) {
    void* data = nullptr;
    const auto found = wanted_.find(key);
    demand(searcher_->search(key.data(), data) == (found != wanted_.end()), "a search finds");
    if (found != wanted_.end())
      demand(std::memcmp(data, found->second.data(), default_.size()) == 0, "the data is there");
  }
  void read() {
    demand(store_->getcount() == static_cast<std::int32_t>(wanted_.size()), "the records count");
    auto next = wanted_.begin();
    recordkey key(static_cast<std::size_t>(dimension_));
    std::string data = default_;
    if (store_->startread())
      while (store_->getnextrecord(key.data(), data.data())) {
        demand(next != wanted_.end() && key == next->first && data == next->second,
               "records are read in the order of their keys");
        ++next;
      }
    store_->endread();
    demand(next == wanted_.end(), "all records are read");
    renew();
  }
  void clear() {
    store_->clear();
    wanted_.clear();
    renew();
  }
  /// Each dense store keeps much of the address space for good, so a process makes only some.
  void dense() const {
    static int made = 0;
    for (const auto& [key, data] : wanted_)
      if (std::ranges::any_of(key, [](std::int32_t each) { return each < 0 || each > 60; })) return;
    if (datasize_ == 0 || datasize_ > 13 || dimension_ > 2 || ++made > 5) return;
    tzemadatafull full(*store_);
    full.allocatememory(*store_);
    const std::unique_ptr<tzemadatasearcher> searcher(full.createsearcher());
    for (const auto& [key, data] : wanted_) {
      void* found = nullptr;
      const bool is = searcher->search(key.data(), found);
      demand(is == (data != default_), "the dense store finds");
      demand(!is || std::memcmp(found, data.data(), data.size()) == 0, "and has the data");
    }
  }

  unsigned kind_;
  std::int32_t dimension_, datasize_;
  std::string default_;
  std::unique_ptr<tzemadatastore> store_;
  std::unique_ptr<tzemadatasearcher> searcher_;
  records wanted_;
};

void stores(picker& from) {
  twins both(from);
  while (!from.done()) both.step(from);
  both.finish();
}

// --- The pool

struct piece {
  unsigned char* at;
  std::int32_t size;
  unsigned char mark;

  void fill() const { std::memset(at, mark, bytes()); }
  void check() const {
    demand(reinterpret_cast<std::uintptr_t>(at) % 8 == 0, "a piece is aligned to 8 bytes");
    for (std::size_t i = 0; i < bytes(); i++) demand(at[i] == mark, "nobody else has the piece");
  }
  std::size_t bytes() const { return static_cast<std::size_t>(std::max(size, 0)); }
};

void pool(picker& from) {
  std::vector<piece> held;
  zmaheaprelease();
  const std::int64_t before = allocmemsize();
  for (unsigned char mark = 1; !from.done(); mark++) {
    if (from.coin() || held.empty()) {
      const unsigned wide = from.byte();
      const std::int32_t size = wide < 250 ? static_cast<std::int32_t>(wide) - 3
                                           : static_cast<std::int32_t>(wide - 249) * 5000;
      held.push_back({static_cast<unsigned char*>(xgetmem(size)), size, mark});
      held.back().fill();
    } else {
      std::swap(held[from.below(static_cast<unsigned>(held.size()))], held.back());
      held.back().check();
      xfreemem(held.back().at, held.back().size);
      held.pop_back();
    }
  }
  for (const piece& each : held) {
    each.check();
    xfreemem(each.at, each.size);
  }
  for (const heapslot& each : zmaheapstate().slots)
    demand(each.getcount == each.freecount, "all pieces are back");
  zmaheaprelease();
  demand(allocmemsize() == before, "all memory is back");
}

// --- Texts that grow

void texts(picker& from) {
  tdynamicstr text, other;
  std::string wanted, copy;
  while (!from.done()) {
    const std::int32_t n = static_cast<std::int32_t>(from.below(90)) - 2;
    const std::string_view piece = from.text(200);
    switch (from.below(8)) {
      case 0:
        text.addstr(piece), wanted += piece;
        break;
      case 1:
        text.addbl(n), wanted.append(static_cast<std::size_t>(std::max(n, 0)), ' ');
        break;
      case 2:
        text.addint(n * 99991), wanted += std::to_string(n * 99991);
        break;
      case 3:
        other.assign(text), copy = wanted;
        break;
      case 4:
        text.addstr(text.view()), wanted += std::string(wanted);
        break;
      case 5:
        text.clear(), wanted.clear();
        break;
      case 6:
        text.setch(n, '!');
        if (n >= 0 && static_cast<std::size_t>(n) < wanted.size())
          wanted[static_cast<std::size_t>(n)] = '!';
        break;
      default: {
        const shortstring got = text.getstr(n, 40);
        demand(got.view().size() == (n < 1 ? 0U : 40U), "as long as was asked for");
        for (std::int32_t i = 0; n >= 1 && i < 40; i++)
          demand(got.view()[static_cast<std::size_t>(i)] == text.getchar(n + i), "the same bytes");
      }
    }
    demand(text.view() == wanted && other.view() == copy, "a text is what was added to it");
    if (wanted.size() > 5000) text.clear(), wanted.clear();
  }
}

// --- The listing

/// What writes whole items, whose lines keep the right margin.
void writeitem(tzmalist& list, picker& from) {
  const std::string_view text = from.text(120);
  switch (from.below(9)) {
    case 0:
      return list.wrstr(text);
    case 1:
      return list.wrstrln(text);
    case 2:
      return list.wrint(from.integer());
    case 3:
      return list.wrstrblock(text);
    case 4:
      return list.wrstrbrk(text, ' ');
    case 5:
      return list.wrstrmod(text, static_cast<std::int32_t>(from.below(20)));
    case 6:
      return list.wrboolfmt(from.coin(), static_cast<std::int32_t>(from.below(9)));
    case 7:
      return list.wrdblfmt(from.integer() / 8.0, static_cast<std::int32_t>(from.below(30)), 3);
    default:
      return list.wrln();
  }
}

void arrange(tzmalist& list, picker& from) {
  const std::string_view text = from.text(60);
  const std::int32_t n = from.integer();
  switch (from.below(22)) {
    case 0:
      return list.settitle(text);
    case 1:
      return list.setsubtitle(text);
    case 2:
      return list.setsystitle(text, "right");
    case 3:
      return list.setleftmargin(n);
    case 4:
      return list.setlinesperpage(n);
    case 5:
      return list.setpagenumber(n);
    case 6:
      return list.setindent(n % 300);
    case 7:
      return list.indentstart();
    case 8:
      return list.indentdone();
    case 9:
      return list.headerstart(text);
    case 10:
      return list.headerdone(text);
    case 11:
      return list.headerdrop(text);
    case 12:
      return list.headershow();
    case 13:
      return list.headershowlast(n);
    case 14:
      return list.headersingle(text);
    case 15:
      return list.newpage();
    case 16:
      return list.addtoindex(static_cast<std::uint8_t>(n % 10), text);
    case 17:
      return list.reqlinesskip(n, static_cast<std::int32_t>(from.below(5)));
    case 18:
      return list.wrstrfmt(text, n % 300);
    case 19:
      return list.setuserrightmargin(n);
    case 20:
      return list.setuserleftmargin(n);
    default:
      tdynamicstr marks;
      marks.addstr("   * *");
      return list.wrpcharln(n, from.coin(), text.data(), static_cast<std::int32_t>(text.size()) - 1,
                            &marks);
  }
}

void listing(picker& from) {
  static const memoryfile page, index;
  textfile list, second;
  list.assign(page.path());
  list.rewrite();
  second.assign(index.path());
  second.rewrite();
  const bool plain = from.coin();
  const std::int32_t margin = 21 + static_cast<std::int32_t>(from.below(60));
  {
    tzmalist pages(&list, from.coin() ? &second : nullptr);
    pages.setrightmargin(margin);
    pages.pagecontrol = plain ? listPageNone : static_cast<std::uint8_t>(from.below(4));
    if (pages.pagecontrol == listPageFilled) pages.setlinesperpage(60);
    pages.casing = plain ? listAsIs : static_cast<std::uint8_t>(from.below(3));
    pages.showruler = !plain && from.coin();
    pages.showmarks = !plain && from.coin();
    pages.doublespace = from.coin();
    for (int steps = 0; !from.done() && steps < 300; steps++) {
      try {
        plain || from.coin() ? writeitem(pages, from) : arrange(pages, from);
      } catch (const eassertionfailed&) {  // named by the header, and nothing is lost
      }
      pages.getlinenumber();
      pages.getpagenumber();
    }
  }
  list.close();
  second.close();
  if (!plain) return;
  std::size_t start = 0;
  for (const std::string text = page.content(); start < text.size();) {
    const std::size_t end = std::min(text.find('\n', start), text.size());
    demand(end - start <= static_cast<std::size_t>(margin), "a line keeps the right margin");
    start = end + 1;
  }
}

}  // namespace
}  // namespace optxv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace optxv::fuzz;
  picker from(data, std::min<std::size_t>(size, 4000));
  constexpr void (*units[])(picker&) = {stores, pool, texts, listing};
  units[from.below(4)](from);
  return 0;
}
