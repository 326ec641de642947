#include "parameter/snapshots.h"

#include <gtest/gtest.h>

#include <optional>

#include "foundation/textfile.h"
#include "optxv/embedding.h"
#include "support/everykind.h"
#include "support/optiontable.h"

namespace optxv {
namespace {

/// All that a snapshot brings back, as text.
std::string whole(optiontable& table) {
  std::string all = table.state();
  for (std::int32_t i = 1; i <= table->optcount(); ++i) {
    optxv_place place;
    std::int32_t road = 0, through = 0;
    optxv_value_place(&*table, i, &place, &road, &through);
    all += " " + std::to_string(table->getobjects(i - 1)->recent) + std::to_string(road) +
           std::to_string(through) + ":" + std::to_string(place.line) + "+" +
           std::to_string(place.column);
  }
  std::string written;
  textfile file;
  file.rewritememory(written);
  table->writeparameters(file);
  file.close();
  for (const std::int32_t selector : {0, 1}) {
    all += " " + std::to_string(table->filledlists[static_cast<std::size_t>(selector)].size());
  }
  std::int32_t dropped = 0;
  all += " " + std::to_string(table->optdotoptcount(dropped)) + std::to_string(dropped);
  return all + "\n" + written;
}

const char* const values =
    "tol 0.25\nlogname one\nrange 2 3\nmethod dual\nmethod primal\nboth 7\n"
    "names /a\nnames /b\n--made first\nx.scale('a',*) = 2\nx.scale -1\n"
    "tie e(i)$v(i) = 1\nfree 1\nsteplim -4\nfree 0";
const char* const others[] = {"", "tol 1\nlogname other\nrange 4\nscale\nsteplim 9\nmethod primal",
                              "names /c\n--made again\n--later x\ny.scale 3\ntie f$w 0"};

TEST(Snapshots, BringBackAllThatIsSet) {
  for (const std::string first : {values, ""}) {
    optiontable table(everykind());
    table->optrecentenabledset(0);
    table.read("scale 0");  // set, but not recently
    table->optrecentenabledset(1);
    table.read(first);
    const std::string before = whole(table);
    const valuesnapshot taken(*table);
    for (const char* other : others) {
      table.read(other);
      table->optclearmessages();
      ASSERT_TRUE(taken.restore(*table));
      // The list that was made meanwhile stays, empty.
      EXPECT_EQ(replaced(whole(table), "000:0+0 ", ""), replaced(before, "000:0+0 ", ""));
      EXPECT_EQ(table->optmessagecount(), 0);
    }
    table->optresetall();
    ASSERT_TRUE(taken.restore(*table));
    EXPECT_EQ(table.read("steplim 7").option("steplim").getasstring(), "7");
  }
}

TEST(Snapshots, AreOfOneHandleAndMayOutliveIt) {
  optxv_handle first = nullptr, second = nullptr;
  optxv_snapshot* taken = nullptr;
  ASSERT_EQ(optxv_create(&first), optxv_ok);
  ASSERT_EQ(optxv_take_snapshot(first, &taken), optxv_ok);
  optxv_free(&first);
  ASSERT_EQ(optxv_create(&second), optxv_ok);  // often at the same address
  EXPECT_EQ(optxv_restore_snapshot(second, taken), optxv_other_table);
  optxv_free_snapshot(&taken);
  EXPECT_EQ(taken, nullptr);
  optxv_free(&second);
}

}  // namespace
}  // namespace optxv
