// The definitions and parameter files that a client works on, read and kept.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "analysis/bindings.h"
#include "analysis/run.h"
#include "lint/linter.h"
#include "server/buffers.h"
#include "server/marks.h"
#include "tasks/helpwriter.h"
#include "writers/facts.h"

namespace command {

/// What a document is, and with which definition it goes.
struct role {
  enum class source { none, language, bindings, settings, folder, comment };

  source from = source::none;  ///< who says so
  bool isdefinition = false;
  std::string definition = {};  ///< path
  std::string folder = {};      ///< names in texts and in findings count from there
  bool tokens = false;
  bool lint = false, inlayhints = false;

  bool known() const { return from != source::none; }
};

/// A text as it is now, from the client or from disk. The stamp is another one for another text.
struct currenttext {
  std::string stamp = {};
  std::optional<textdocument> text = {};
  std::string failure = {};  ///< in words, where there is no text
};

/// A definition, kept as it was read, and the parameter text that was read last with it. An edit of
/// parameter text reads that text alone; the option set then goes back to where it was after the
/// definition. The definition is read again when its own text changes. What the rules of lint find,
/// if they are switched on, stands among the findings.
struct kepttable {
  std::string path, folder;
  bool tokens = false;
  bool lint = false;
  std::string name;  ///< of the definition, as findings have it

  std::string stamp;            ///< of the text that was read
  std::unique_ptr<run> kept;    ///< nil if the text could not be read
  std::optional<linter> rules;  ///< has joined the kept run; nothing where lint is off
  bool good = false;            ///< it declares an option
  std::vector<finding> findings;
  textmarks marks;                 ///< of the definition
  optxv::tablefacts facts;         ///< option N of the readers at N - 1
  std::optional<helpwriter> help;  ///< of these facts

  std::string parameters;       ///< path of what was read last; empty if none was
  std::string parametersstamp;  ///< of all the texts that this took
  std::vector<finding> parametersfindings;
  marklist parametersmarks;

  std::vector<finding>* sink = nullptr;  ///< where findings go
  std::unique_ptr<marklist> listening;
};

/// Answers what a document is and what is in it, reading what has changed since it was asked last.
/// It changes the working folder of the process, since readers open nested files from there.
/// BORROWS: the buffers.
class project : public listener {
 public:
  explicit project(const buffers& open) : open_(open) {}

  /// The client's settings; its folder is the one from which their paths count.
  void setsettings(bindings settings) { settings_ = std::move(settings), forget(); }
  const bindings& settings() const { return settings_; }
  /// Forgets what files and folders on disk have said about roles.
  void forget() { roles_.clear(), bindings_.clear(); }
  /// A document was closed: what was kept for it alone goes.
  void closed(const std::string& path);

  const role& roleof(const std::string& path);
  /// What is wrong in the nearest optxv.json of a document, and its path; nothing if all is well.
  std::optional<std::pair<std::string, finding>> bindingsfault(const std::string& path);

  /// The definition of a role, as it is now.
  kepttable& definition(const role& of);
  /// The same after the parameter text of a path was read with it.
  kepttable& parameters(const std::string& path, const role& of);
  /// All parameter files of a role: those that its binding names, and those that are open.
  std::vector<std::string> filesof(const role& of);
  /// The path of a file that a reader named.
  static std::string pathof(const kepttable& table, const std::string& name);
  /// Another text for another state of a document and of every file that it depended on when it was
  /// read last.
  std::string stampofall(const std::string& path);

  currenttext textof(const std::string& path) const;
  /// The lines of a document or file, for places in it.
  const linedtext& linesof(const std::string& path);

  std::optional<std::string_view> opening(const char* name) override;

 private:
  struct readbindings {
    std::string stamp;
    std::variant<bindings, finding> said;
  };

  role findrole(const std::string& path);
  const bindings* nearest(const std::string& folder, std::string* file = nullptr);
  role bound(const bindings& by, const std::string& path, const std::string& language,
             role::source from) const;
  void readdefinition(kepttable& table, const currenttext& text);
  void readparameters(kepttable& table, const std::string& path, const currenttext& text);
  std::string stampof(const std::string& path) const;
  std::string stampwith(const std::string& path, const std::string& own);

  const buffers& open_;
  bindings settings_;
  std::map<std::string, role> roles_;
  std::map<std::string, readbindings> bindings_;  ///< by the path of the file
  std::map<std::string, kepttable> tables_;
  std::map<std::string, std::set<std::string>> wanted_;  ///< by the path of the parameter text
  struct lines {
    std::string stamp;
    linedtext text;
  };
  std::map<std::string, lines> lines_;  ///< of files that are not open
  std::string folder_;                  ///< where the read that is going on is
  const std::string empty_;
};

}  // namespace command
