#include "server/formatting.h"

#include <algorithm>

#include "layout/layout.h"

namespace command {
namespace {

/// How much of two texts is the same at the front, in whole lines.
std::size_t sameahead(std::string_view left, std::string_view right) {
  const auto apart = std::ranges::mismatch(left, right);
  const auto same = static_cast<std::size_t>(apart.in1 - left.begin());
  return left.substr(0, same).rfind('\n') + 1;  // 0 if there is none
}

/// The same at the end, of which the first bytes are not to be looked at.
std::size_t samebehind(std::string_view left, std::string_view right, std::size_t ahead) {
  const std::size_t most = std::min(left.size(), right.size()) - ahead;
  std::size_t same = 0;
  while (same < most && left[left.size() - 1 - same] == right[right.size() - 1 - same]) same++;
  const std::string_view tail = left.substr(left.size() - same);
  return same == 0 ? 0 : tail.size() - std::min(tail.find('\n') + 1, tail.size());
}

}  // namespace

json formatting(session& in, const json& params) {
  const auto of = subjectof(in, params);
  json edits = json::array();
  if (!of) return edits;
  const std::string& before = of->text().text();
  const laidout after =
      of->what.isdefinition
          ? layoutdefinition(before, {})
          : layoutparameters(of->table.kept->definitiontext(), before, {.tokens = of->what.tokens});
  if (after.text == before) return edits;
  const std::size_t ahead = sameahead(before, after.text);
  const std::size_t behind = samebehind(before, after.text, ahead);
  edits.push_back({{"range", rangejson(of->text(), ahead, before.size() - behind, in.counts)},
                   {"newText", after.text.substr(ahead, after.text.size() - behind - ahead)}});
  return edits;
}

}  // namespace command
