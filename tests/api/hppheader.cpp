// The header for C++17 alone, with every warning an error and without run-time type information: as
// a host has it that does not share our settings. Uses every template with every type it promises.
#include <optxv/optxv.hpp>

#include <algorithm>
#include <type_traits>

namespace {

enum class level { low, high };

template <class Type>
bool comes_back(optxv::options& options, optxv::key which, const Type& value) {
  options.set(which, value);
  return options.get<Type>(which) == value &&
         options.get<std::optional<Type>>(which) == std::optional<Type>(value);
}

constexpr char definition[] =
    "number integer     1 0 0 9 1 1 A number\n"
    "real   double.TWO  2 0 0 9 1 1 Two reals\n"
    "flag   boolean     3 0     1 1 A flag\n"
    "word   string      4 no    1 1 A text\n"
    "list   strlist     5       1 1 Texts\n";

static_assert(!std::is_copy_constructible_v<optxv::options>);
static_assert(!std::is_copy_constructible_v<optxv::snapshot>);
static_assert(std::is_nothrow_move_constructible_v<optxv::options>);
static_assert(std::is_nothrow_move_assignable_v<optxv::snapshot>);

}  // namespace

int main() {
  optxv::options options = optxv::options::from_text(definition);
  const bool good = comes_back<std::int32_t>(options, "number", 7) &&
                    comes_back(options, std::string("number"), level::high) &&
                    comes_back(options, "real", std::pair(1.5, 2.5)) &&
                    comes_back(options, std::string_view("flag"), true) &&
                    comes_back<std::string>(options, "word", "yes") &&
                    comes_back<std::string_view>(options, "word", "") &&
                    comes_back<std::vector<std::string>>(options, "list", {"a", "b"}) &&
                    comes_back<std::vector<std::string_view>>(options, "list", {"b"});
  const auto table = options.table();
  const auto named = [](const optxv::option& each) { return each.name == "flag"; };
  return good && std::count_if(table.begin(), table.end(), named) == 1 ? 0 : 1;
}
