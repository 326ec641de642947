#include "parameter/values.h"

#include <algorithm>

#include "foundation/strutilx.h"

namespace optxv {

namespace {

constexpr std::size_t longestvalue = shortstring::maximum;

/// The end of an unquoted value: the first comment character.
std::size_t plainend(std::string_view line, const charset& comment) {
  const auto stops = [&](char c) { return comment.has(c); };
  return static_cast<std::size_t>(std::find_if(line.begin(), line.end(), stops) - line.begin());
}

/// The end of a quoted value, given without its opening quote: the first comment character that is
/// outside quotes.
std::size_t quotedend(std::string_view line, const charset& comment) {
  bool inside = true;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') inside = !inside;
    if (!inside && comment.has(line[i])) return i;
  }
  return line.size();
}

shortstring quotedvalue(std::string_view line) {
  shortstring value = line;
  value = trim(value);
  if (value.empty()) return value;
  if (value.last() == '"')
    value.setlength(value.length() - 1);
  else
    value.append('"');
  return trim(value);
}

/// The place of a part of the text that begins at a place.
textplace placeof(std::string_view part, std::string_view text, const textplace& place) {
  return place.part(static_cast<std::size_t>(part.data() - text.data()), part.size());
}

bool oddquotes(std::string_view text) {
  return std::count(text.begin(), text.end(), '"') % 2 != 0;
}

/// Finds the place of a quoted value in its text, which begins with the quote.
void placequoted(readvalue& value, std::string_view text, const textplace& place) {
  std::string_view inner = trim(text.substr(1));
  value.quotes = oddquotes(text) ? optxv_quotes_open : optxv_quotes_closed;
  value.written =
      place.part(0, static_cast<std::size_t>(inner.data() - text.data()) + inner.size());
  if (inner.ends_with('"')) inner = trim(inner.substr(0, inner.size() - 1));
  value.place = placeof(inner, text, place);
}

}  // namespace

void readrest(tminiparser& in, readvalue& value) {
  value.good = in.skipbl();
  if (!value.good) return;
  const std::string_view line = in.ahead();
  const bool isquoted = line.front() == '"';
  const std::size_t end =
      isquoted ? 1 + quotedend(line.substr(1), in.eolcommset()) : plainend(line, in.eolcommset());
  if (isquoted) {
    value.text = value.own = quotedvalue(line.substr(1, end - 1));
    placequoted(value, line.substr(0, end), in.placeof(line.substr(0, end)));
  } else {
    const std::string_view text = trimright(line.substr(0, end));
    value.text = text.size() <= longestvalue ? text : trimright(text.substr(0, longestvalue));
    value.place = value.written = in.placeof(text);
  }
  in.passvalue(end, line.size());
}

void readtoken(tminiparser& in, readvalue& value) {
  in.skipbl();
  if (value.text = in.plaintoken(); !value.text.empty()) {
    value.good = true;
    value.place = value.written = in.placeof(value.text);
    return in.pass(value.text.size());
  }
  const textplace place = in.restplace();
  const bool isquoted = in.ch() == '"';
  value.good = in.nexttoken(value.own);
  value.text = value.own;
  value.place = value.written = in.since(place);
  if (!isquoted) return;
  value.quotes = value.good ? optxv_quotes_closed : optxv_quotes_open;
  value.place = value.written.after(1).shorter(value.good ? 1 : 0);
}

void tellvalue(const tzmaoptions& options, const readvalue& value, const toption* option,
               std::int32_t which) {
  const std::int32_t number = option != nullptr ? option->position + 1 : 0;
  options.told->cutlong(optxv_cut_value, number, value.text, value.place);
  if (!options.told->hears(&optxv_listener::value)) return;
  options.told->tell(&optxv_listener::value, {.option = number,
                                              .which = which,
                                              .quotes = value.quotes,
                                              .good = value.good ? 1 : 0,
                                              .text = textof(value.text),
                                              .place = options.told->placed(value.place),
                                              .written = options.told->placed(value.written)});
}

}  // namespace optxv
