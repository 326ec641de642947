#include "completion/shells.h"

#include <algorithm>
#include <array>

#include "completion/bashline.h"
#include "text/printable.h"

namespace command {
namespace {

// --- Quotes

/// In bash and zsh nothing has a meaning between single quotes, not even a backslash.
std::string plainquoted(std::string_view text) {
  return '\'' + bashquoted(text, '\'') + '\'';
}

std::string fishquoted(std::string_view text) {
  std::string result = "'";
  for (const char c : text) result += (c == '\'' || c == '\\' ? "\\" : "") + std::string(1, c);
  return result + '\'';
}

// --- Answers: a line that says what is offered, and then a line for each candidate

std::string_view wordof(offer::kind kind) {
  constexpr std::array<std::string_view, 3> words = {"words", "files", "folders"};
  return words[static_cast<std::size_t>(kind)];
}

/// For shells that do the quoting. Behind `files` comes the part before the name of a file.
std::string plainanswer(std::span<const std::string> handed, const offermaker& find) {
  const offer found = find(handed);
  if (found.candidates.empty() && found.otherwise != offer::kind::words)
    return std::string(wordof(found.otherwise)) + '\t' + found.before + '\n';
  std::string text = "words\n";
  for (const candidate& each : found.candidates)
    text += each.word + (each.text.empty() ? "" : '\t' + printableline(each.text)) + '\n';
  return text;
}

/// What is handed over is the line and the end of it that is to be replaced. The replies are as
/// they are to stand in the line. What follows < or > is a file, whatever the program is.
std::string bashanswer(std::span<const std::string> handed, const offermaker& find) {
  const bashline line = readbashline(handed[0], handed.size() > 1 ? handed[1] : "");
  if (line.redirected || line.words.size() < 2) return "files\n";
  const offer found = find(line.words);
  std::string text = std::string(wordof(found.otherwise)) + '\n';
  for (const candidate& each : found.candidates)
    text += bashquoted(std::string_view(each.word).substr(line.kept), line.quote) + '\n';
  return text;
}

// --- Scripts: {id} makes the names of functions, {name} is the program, {flags} go before --

constexpr std::string_view bashskeleton = R"(# What bash offers for {name}; made by optxv.
_optxv{id}() {
  local answer
  mapfile -t answer < <(command optxv complete bash{flags} -- "${COMP_LINE:0:COMP_POINT}" "$2" 2>/dev/null)
  COMPREPLY=("${answer[@]:1}")
  case ${answer-} in
    files) compopt -o default ;;
    folders) compopt -o dirnames ;;
  esac
  case ${COMPREPLY-} in
    *=) compopt -o nospace ;;
  esac
}
complete -F _optxv{id} {name}
)";

// The function may be loaded by its name, or the script be read as a whole.
constexpr std::string_view zshskeleton = R"(#compdef {name}
# What zsh offers for {name}; made by optxv.
_optxv{id}() {
  local typed=$QIPREFIX$PREFIX${compstate[quote]} line text
  local -a answer whole_words whole_shown open_words open_shown
  local -i width=0
  typed=${(Q)typed}
  answer=("${(@f)$(command optxv complete zsh{flags} -- "${(@Q)words[1,CURRENT-1]}" "$typed" 2>/dev/null)}")
  case ${answer[1]%%$'\t'*} in
    files | folders)
      text=${answer[1]#*$'\t'}
      compset -p ${#text}
      if [[ $answer[1] = files* ]]; then _files; else _files -/; fi
      return
      ;;
  esac
  shift answer
  for line in "${(@)answer}"; do
    text=${line%%$'\t'*}
    if (( ${#text} > width )); then width=${#text}; fi
  done
  for line in "${(@)answer}"; do
    text=${line%%$'\t'*}
    if [[ $line = *$'\t'* ]]; then
      line="${(r:width:)text} -- ${line#*$'\t'}"
      line=${line[1,COLUMNS-1]}
    fi
    if [[ $text = *= ]]; then
      open_words+=("$text") open_shown+=("$line")
    else
      whole_words+=("$text") whole_shown+=("$line")
    fi
  done
  local -a list
  if [[ "$answer" = *$'\t'* ]]; then list=(-l); fi
  compadd $list -d open_shown -S '' -a open_words
  local -i failed=$?
  compadd $list -d whole_shown -a whole_words && failed=0
  return failed
}
if [ "$funcstack[1]" = _optxv{id} ]; then _optxv{id} "$@"; else compdef _optxv{id} {name}; fi
)";

constexpr std::string_view fishskeleton = R"(# What fish offers for {name}; made by optxv.
function __optxv{id}
    set -l typed (string unescape -- (commandline -ct))
    set -g __optxv{id}_answer (command optxv complete fish{flags} -- (commandline -opc) "$typed" 2>/dev/null)
    string match -q 'words*' -- $__optxv{id}_answer[1]
    and set -e __optxv{id}_answer[1]
end
complete -c {name} -n __optxv{id} -f -k -a '(string join -- \n $__optxv{id}_answer)'
)";

constexpr std::array<shell, 3> shells = {{{"bash", bashskeleton, plainquoted, bashanswer},
                                          {"zsh", zshskeleton, plainquoted, plainanswer},
                                          {"fish", fishskeleton, fishquoted, plainanswer}}};

/// A name of its own for each program, of characters that names of functions have.
std::string idof(const completedprogram& program) {
  if (program.definition.empty()) return "";
  constexpr std::string_view digits = "0123456789abcdef";
  std::string id = "_of_";
  for (const char c : program.name) {
    const auto code = static_cast<unsigned char>(c);
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'))
      id += c;
    else
      id += {'_', digits[code / 16], digits[code % 16]};
  }
  return id;
}

std::string flagsof(const shell& row, const completedprogram& program) {
  if (program.definition.empty()) return "";
  return " --host " + row.quoted(program.name) + " --definition " + row.quoted(program.definition);
}

std::string wordof(const shell& row, const std::string& name) {
  const bool plain = name.find_first_not_of(
                         "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                         "0123456789_-.") == name.npos;
  return plain ? name : row.quoted(name);
}

}  // namespace

std::span<const std::string_view> shellnames() {
  static constexpr auto names = [] {
    std::array<std::string_view, shells.size()> all;
    std::ranges::transform(shells, all.begin(), &shell::name);
    return all;
  }();
  return names;
}

const shell& shellof(std::string_view name) {
  return *std::ranges::find(shells, name, &shell::name);
}

std::string scriptof(const shell& row, const completedprogram& program) {
  const std::array<std::pair<std::string_view, std::string>, 3> parts = {
      {{"{id}", idof(program)},
       {"{flags}", flagsof(row, program)},
       {"{name}", wordof(row, program.name)}}};
  std::string text;
  for (std::string_view rest = row.skeleton; !rest.empty();) {
    const auto part =
        std::ranges::find_if(parts, [&](const auto& each) { return rest.starts_with(each.first); });
    if (part != parts.end())
      text += part->second;
    else
      text += rest.front();
    rest.remove_prefix(part == parts.end() ? 1 : part->first.size());
  }
  return text;
}

}  // namespace command
