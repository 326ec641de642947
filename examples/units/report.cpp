// Prints a stock list in pages: titles that change, a heading that is repeated on every page,
// totals kept on the page of their rows, and at the end an index of where things are. Then it says
// what the pool allocator did for the records.
#include <optxv/listing/zmaheap.h>
#include <optxv/listing/zmaheapstats.h>
#include <optxv/listing/zmalist.h>

#include <array>
#include <cstdio>
#include <iterator>
#include <new>
#include <string_view>

namespace {

constexpr std::string_view parts[] = {"bolt", "nut",   "washer", "screw",  "rivet",
                                      "pin",  "clamp", "hinge",  "spring", "bracket"};

/// A record in the pool: a row of the list, in a chain.
struct stock {
  std::string_view part;
  std::int32_t pieces;
  double price;
  stock* next;
};

stock* stockof(std::int32_t hall) {
  stock* chain = nullptr;
  for (std::int32_t i = 14; i-- > 0;)
    chain = new (optxv::xgetmem(sizeof(stock)))
        stock{parts[static_cast<std::size_t>(i) % std::size(parts)], (i * 37 + hall * 11) % 90,
              0.25 * (i + 1), chain};
  return chain;
}

void giveback(stock* chain) {
  while (chain != nullptr) {
    stock* const next = chain->next;
    optxv::xfreemem(chain, sizeof(stock));
    chain = next;
  }
}

void writerow(optxv::tzmalist& list, const stock& row) {
  list.wrstrfmt(row.part, -12);
  list.wrintfmt(row.pieces, 8);
  list.wrdblfmt(row.price, 12, 2);
  list.wrdblfmt(row.price * row.pieces, 12, 2);
  list.wrln();
}

void writehall(optxv::tzmalist& list, const char* name, std::int32_t hall) {
  list.setsubtitle(name);
  stock* const chain = stockof(hall);
  double total = 0;
  for (const stock* row = chain; row != nullptr; row = row->next) {
    writerow(list, *row);
    total += row->price * row->pieces;
  }
  list.reqlines(4);  // the total stays with its line and its note
  list.wrstrfmt("--------", 44);
  list.wrln();
  list.wrstrfmt("total", -20);
  list.wrdblfmt(total, 24, 2);
  list.wrln();
  if (total > 500) {
    list.addtoindex(9, "dear");
    list.wrstr("note: ");
    list.wrstrblock("this hall holds more than planned, move some of it elsewhere");
  }
  giveback(chain);
}

void writereport(optxv::tzmalist& list) {
  list.pagecontrol = optxv::listPageNone;
  list.setrightmargin(50);
  list.setlinesperpage(20);
  list.setsystitle("Stock", "");
  list.settitle("All halls");
  list.headerstart("columns");
  list.wrstrln("part          pieces       price       value");
  list.headerdone("columns");
  writehall(list, "North hall", 1);
  writehall(list, "South hall", 2);
  list.settitle("Memory");
  list.setsubtitle("of the records");
  list.headerdrop("columns");
  list.setrightmargin(92);
  list.setlinesperpage(40);
  optxv::zmaheapstats(list, 0);
}

void printindex(const char* name) {
  optxv::textfile index;
  index.assign(name);
  index.reset();
  std::puts("Index (kind, line, text):");
  for (std::array<char, 80> line; !index.eof(); index.readln())
    std::printf("%.*s\n", index.readstring(line.data(), line.size()), line.data());
}

}  // namespace

int main() {
  const char* const indexname = "report.index";
  optxv::textfile output, index;  // no name: the standard output
  index.assign(indexname);
  output.rewrite();
  index.rewrite();
  if (optxv::ioresult() != 0) return 1;
  {
    optxv::tzmalist list(&output, &index);
    writereport(list);
  }
  index.close();
  output.close();
  optxv::zmaheaprelease();
  printindex(indexname);
  std::remove(indexname);
}
