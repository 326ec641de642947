#include "exchange/settingsjson.h"

#include "text/printable.h"

namespace command {
namespace {

constexpr std::int32_t first = 1, second = 2;  // of the values, and their bits in the masks

class jsonwriter {
 public:
  jsonwriter(const optxv::options& options, bool all, const settingsloss& lost)
      : options_(options), all_(all), lost_(lost) {}

  ordered_json settings() const;

 private:
  ordered_json member(const optxv::option& option) const;
  ordered_json pair(const optxv::option& option) const;
  ordered_json value(const optxv::option& option, std::int32_t which = first) const;
  ordered_json text(std::string_view text, std::int32_t optnr, std::int32_t which) const;
  ordered_json list(const optxv::option& option) const;
  void telllost(const optxv::option& option) const;
  ordered_json dotoptions() const;
  ordered_json dotvalue(const optxv::option& attribute, double value) const;
  ordered_json indicators() const;

  const optxv::options& options_;
  bool all_;
  const settingsloss& lost_;
};

bool isset(const optxv::option& option) {
  return option.defined != 0 || (option.kind == optxv_kind_list && option.items > 0);
}

ordered_json jsonwriter::settings() const {
  ordered_json result = ordered_json::object();
  for (const optxv::option& each : options_.table()) {
    if (formof(each) == memberform::none)
      telllost(each);
    else if (isset(each) || (all_ && !each.runtime))
      if (ordered_json value = member(each); !value.is_discarded())
        addmember(result, each.name, std::move(value));
  }
  if (ordered_json dots = dotoptions(); !dots.empty()) result[dotmember] = std::move(dots);
  if (ordered_json marks = indicators(); !marks.empty()) result[indicatormember] = std::move(marks);
  return result;
}

/// The value of a member; a discarded one if there is none.
ordered_json jsonwriter::member(const optxv::option& option) const {
  switch (formof(option)) {
    case memberform::flag:
      return isset(option);
    case memberform::pair:
      return pair(option);
    case memberform::list:
      return list(option);
    default:
      break;
  }
  ordered_json result = value(option);
  if (!result.is_null()) return result;
  // Only a default has no form of its own, and the name alone gives it.
  if (formof(option) == memberform::optional) return result;
  lost_(option.number, first, "its value has no form in JSON");
  return ordered_json::value_t::discarded;
}

/// A value that is not set is null.
ordered_json jsonwriter::pair(const optxv::option& option) const {
  ordered_json both = ordered_json::array();
  for (const std::int32_t which : {first, second})
    both.push_back(isset(option) && (option.defined & which) == 0 ? ordered_json()
                                                                  : value(option, which));
  return both;
}

/// Null for a value that has no form in JSON: a default of a boolean that is neither 0 nor 1.
ordered_json jsonwriter::value(const optxv::option& option, std::int32_t which) const {
  if (option.data == optxv_data_real) return options_.get<double>(option.number, which);
  if (option.data == optxv_data_text)
    return text(options_.get<std::string>(option.number, which), option.number, which);
  const auto number = options_.get<std::int32_t>(option.number, which);
  if (option.kind != optxv_kind_boolean) return number;
  return number == 0 || number == 1 ? ordered_json(number == 1) : ordered_json();
}

ordered_json jsonwriter::text(std::string_view text, std::int32_t optnr, std::int32_t which) const {
  if (!isutf8(text))
    lost_(optnr, which, "JSON cannot hold its text " + inquotes(text) + ", which is no UTF-8");
  return text;
}

ordered_json jsonwriter::list(const optxv::option& option) const {
  ordered_json items = ordered_json::array();
  for (const std::string_view each : options_.list(option.number))
    items.push_back(text(each, option.number, first));
  return items;
}

/// A macro can set an obsolete option; the attribute of a text keeps what an entry gave it last.
void jsonwriter::telllost(const optxv::option& option) const {
  if (!isset(option) || isattribute(option)) return;
  const bool dotted = option.name.starts_with('.');
  lost_(option.number, first,
        dotted ? "it has a text, and only the numbers of dot options are kept"
               : "it is obsolete, so that it cannot be set by its name");
}

// --- Dot options and indicators

ordered_json jsonwriter::dotoptions() const {
  ordered_json all = ordered_json::array();
  for (const optxv::dot_option& each : options_.dot_options()) {
    const optxv::option attribute = options_.describe(each.option);
    if (!isattribute(attribute)) continue;
    ordered_json entry = {{"symbol", each.symbol}, {"attribute", attribute.name}};
    for (const std::string& label : each.labels)
      entry["labels"].push_back(text(label, each.option, first));
    entry["value"] = dotvalue(attribute, each.value);
    all.push_back(std::move(entry));
  }
  return all;
}

/// An entry keeps its value as a real.
ordered_json jsonwriter::dotvalue(const optxv::option& attribute, double value) const {
  if (attribute.data == optxv_data_real) return value;
  const auto number = static_cast<std::int32_t>(value);
  if (attribute.kind == optxv_kind_boolean) return number != 0;
  return number;
}

ordered_json jsonwriter::indicators() const {
  const auto labels = [&](const std::vector<std::string>& from) {
    ordered_json list = ordered_json::array();
    for (const std::string& each : from) list.push_back(text(each, 0, first));
    return list;
  };
  ordered_json all = ordered_json::array();
  for (const optxv::indicator& each : options_.indicators()) {
    ordered_json entry = {{"equation", each.equation}};
    if (!each.equation_labels.empty()) entry["equationlabels"] = labels(each.equation_labels);
    entry["variable"] = each.variable;
    if (!each.variable_labels.empty()) entry["variablelabels"] = labels(each.variable_labels);
    entry["value"] = each.mark == 1;
    all.push_back(std::move(entry));
  }
  return all;
}

}  // namespace

ordered_json settingsjson(const optxv::options& options, bool all, const settingsloss& lost) {
  return jsonwriter(options, all, lost).settings();
}

}  // namespace command
