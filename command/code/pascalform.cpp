// Generated code in Object Pascal: a unit.

#include "code/languages.h"

namespace command {
namespace {

constexpr std::string_view skeleton = R"code(// The options of $(source), made by: $(made)
// Change the definition and make this anew: what is changed here is lost.
// Its file is named after the unit: $(prefix)_options.pas
unit $(prefix)_options;
{$mode objfpc}{$H+}{$scopedenums on}{$packrecords c}

interface

const
  // The table of options that the numbers are of; see optxv_table_mark.
  $(prefix)_table_mark = QWord($$(mark));

  // The numbers of the options.
%each options
  $(prefix)_number_$(id) = $(number);
%end
%if references

  // The numbers that the definition gives them.
%each references
  $(prefix)_reference_$(id) = $(reference);
%end
%end

type
  T$(prefix)_list = array of AnsiString;
%each enumerations

  $(comment)
  T$(prefix)_$(id) = (
%each items
    $(comment)
    $(constant) = $(value)$(comma)
%end
  );
%end

  // The values of the options.
  T$(prefix)_options = record
%each fields
    $(comment)
    $(declaration);
%end
%unless fields
    none: Boolean;
%end
  end;
%if enumerations

const
%each enumerations
%if choice
  // The items of T$(prefix)_$(id) as the definition writes them.
  $(prefix)_$(id)_texts: array[0..$(lastitem)] of AnsiString = (
%end
%if listed
  // The values of T$(prefix)_$(id).
  $(prefix)_$(id)_values: array[0..$(lastitem)] of LongInt = (
%end
%each items
    $(literal)$(comma)
%end
  );
%end
%end

const
  // The defaults of the definition.
  $(prefix)_defaults: T$(prefix)_options = (
%each fields
    $(id): $(default);
%end
%unless fields
    none: false;
%end
  );

// Fills the values from a handle of the C interface, and gives a status: -5 for a handle of another
// definition, of which nothing is filled; -3 where an option has a value that is none of its items,
// which is so while bounds are off: that field has its default.
function $(prefix)_fill(var values: T$(prefix)_options; handle: Pointer): LongInt;
// Sets the options whose values differ from those of the handle. The first failure is the status; the
// other options are set all the same. What was refused is in the queue of messages.
function $(prefix)_apply(const values: T$(prefix)_options; handle: Pointer): LongInt;
%if embedded
// Reads the definition that this was made from. Its text is here, so that no file is needed.
function $(prefix)_read_definition(handle: Pointer): LongInt;
%end

implementation

uses
  SysUtils;

type
  TTextOfC = record
    bytes: PAnsiChar;
    size: SizeUInt;
  end;

const
  // The statuses that are made here, as optxv/embedding.h has them.
  StatusOk = 0;
  StatusRefused = -3;
  StatusOtherTable = -5;

function optxv_table_mark(handle: Pointer): QWord; cdecl; external 'optxv';
function optxv_get_integer_nr(handle: Pointer; number, which: LongInt; var value: LongInt): LongInt; cdecl;
  external 'optxv';
function optxv_set_integer_nr(handle: Pointer; number, which, value: LongInt): LongInt; cdecl; external 'optxv';
function optxv_get_real_nr(handle: Pointer; number, which: LongInt; var value: Double): LongInt; cdecl;
  external 'optxv';
function optxv_set_real_nr(handle: Pointer; number, which: LongInt; value: Double): LongInt; cdecl; external 'optxv';
function optxv_get_text_nr(handle: Pointer; number, which: LongInt; var value: TTextOfC): LongInt; cdecl;
  external 'optxv';
function optxv_set_text_nr(handle: Pointer; number, which: LongInt; bytes: PAnsiChar; size: SizeUInt): LongInt; cdecl;
  external 'optxv';
function optxv_parse_value(handle: Pointer; number, which: LongInt; bytes: PAnsiChar; size: SizeUInt): LongInt; cdecl;
  external 'optxv';
function optxv_reset(handle: Pointer; number: LongInt): LongInt; cdecl; external 'optxv';
function optxv_list_item(handle: Pointer; number, position: LongInt; var item: TTextOfC): LongInt; cdecl;
  external 'optxv';
function optxv_read_definition_text(handle: Pointer; name, bytes: PAnsiChar; size: SizeUInt): LongInt; cdecl;
  external 'optxv';

// A status keeps the first failure.
procedure Note(var status: LongInt; next: LongInt);
begin
  if status = StatusOk then
    status := next;
end;

procedure Get(handle: Pointer; number, which: LongInt; var value: LongInt; var status: LongInt); overload;
begin
  Note(status, optxv_get_integer_nr(handle, number, which, value));
end;

procedure Get(handle: Pointer; number, which: LongInt; var value: Boolean; var status: LongInt); overload;
var
  now: LongInt;
begin
  now := Ord(value);
  Get(handle, number, which, now, status);
  value := now <> 0;
end;

procedure Get(handle: Pointer; number, which: LongInt; var value: Double; var status: LongInt); overload;
begin
  Note(status, optxv_get_real_nr(handle, number, which, value));
end;

procedure Get(handle: Pointer; number, which: LongInt; var value: AnsiString; var status: LongInt); overload;
var
  text: TTextOfC;
  got: LongInt;
begin
  got := optxv_get_text_nr(handle, number, which, text);
  if got = StatusOk then
    SetString(value, text.bytes, text.size);
  Note(status, got);
end;

procedure Get(handle: Pointer; number, which: LongInt; var value: T$(prefix)_list; var status: LongInt); overload;
var
  text: TTextOfC;
  count: LongInt;
begin
  count := 0;
  SetLength(value, 0);
  while optxv_list_item(handle, number, count + 1, text) = which do
  begin
    SetLength(value, count + 1);
    SetString(value[count], text.bytes, text.size);
    count := count + 1;
  end;
end;

procedure Change(handle: Pointer; number, which, value: LongInt; var status: LongInt); overload;
var
  now: LongInt;
begin
  now := 0;
  Get(handle, number, which, now, status);
  if now <> value then
    Note(status, optxv_set_integer_nr(handle, number, which, value));
end;

procedure Change(handle: Pointer; number, which: LongInt; value: Boolean; var status: LongInt); overload;
var
  now: Boolean;
begin
  now := not value;
  Get(handle, number, which, now, status);
  if now <> value then
    Note(status, optxv_set_integer_nr(handle, number, which, Ord(value)));
end;

procedure Change(handle: Pointer; number, which: LongInt; value: Double; var status: LongInt); overload;
var
  now: Double;
begin
  now := 0;
  Get(handle, number, which, now, status);
  if now <> value then
    Note(status, optxv_set_real_nr(handle, number, which, value));
end;

procedure Change(handle: Pointer; number, which: LongInt; const value: AnsiString; var status: LongInt); overload;
var
  now: AnsiString;
begin
  now := '';
  Get(handle, number, which, now, status);
  if now <> value then
    Note(status, optxv_set_text_nr(handle, number, which, PAnsiChar(value), Length(value)));
end;

procedure Change(handle: Pointer; number, which: LongInt; const value: T$(prefix)_list; var status: LongInt); overload;
var
  now: T$(prefix)_list;
  i: LongInt;
  same: Boolean;
begin
  now := nil;
  Get(handle, number, which, now, status);
  same := Length(now) = Length(value);
  for i := 0 to High(now) do
    same := same and (now[i] = value[i]);
  if same then
    Exit;
  Note(status, optxv_reset(handle, number));
  for i := 0 to High(value) do
    Note(status, optxv_parse_value(handle, number, which, PAnsiChar(value[i]), Length(value[i])));
end;

// The position of the item that an option is set to; what it was if that is none of them.
function Choice(handle: Pointer; number, which, value: LongInt; const texts: array of AnsiString;
  var status: LongInt): LongInt;
var
  now: AnsiString;
  got: LongInt;
begin
  now := '';
  got := StatusOk;
  Get(handle, number, which, now, got);
  if got = StatusOk then
    for Result := 0 to High(texts) do
      if LowerCase(now) = LowerCase(texts[Result]) then
        Exit;
  if got = StatusOk then
    got := StatusRefused;
  Note(status, got);
  Result := value;
end;

procedure ChangeChoice(handle: Pointer; number, which, value: LongInt; const texts: array of AnsiString;
  var status: LongInt);
var
  ignored: LongInt;
begin
  ignored := StatusOk;
  if Choice(handle, number, which, -1, texts, ignored) <> value then
    Note(status, optxv_set_text_nr(handle, number, which, PAnsiChar(texts[value]), Length(texts[value])));
end;

// The integer that an option is set to; what it was if that is none of its items.
function Listed(handle: Pointer; number, which, value: LongInt; const values: array of LongInt;
  var status: LongInt): LongInt;
var
  i: LongInt;
begin
  Result := value;
  Get(handle, number, which, Result, status);
  for i := 0 to High(values) do
    if values[i] = Result then
      Exit;
  Note(status, StatusRefused);
  Result := value;
end;

function $(prefix)_fill(var values: T$(prefix)_options; handle: Pointer): LongInt;
begin
  if optxv_table_mark(handle) <> $(prefix)_table_mark then
    Exit(StatusOtherTable);
  values := $(prefix)_defaults;
  Result := StatusOk;
%each fields
%each parts
%if choice
  values.$(id)$(part) := T$(prefix)_$(id)(Choice(handle, $(number), $(which), Ord(values.$(id)$(part)), $(prefix)_$(id)_texts, Result));
%end
%if listed
  values.$(id)$(part) := T$(prefix)_$(id)(Listed(handle, $(number), $(which), Ord(values.$(id)$(part)), $(prefix)_$(id)_values, Result));
%end
%if plain
  Get(handle, $(number), $(which), values.$(id)$(part), Result);
%end
%end
%end
end;

function $(prefix)_apply(const values: T$(prefix)_options; handle: Pointer): LongInt;
begin
  if optxv_table_mark(handle) <> $(prefix)_table_mark then
    Exit(StatusOtherTable);
  Result := StatusOk;
%each fields
%each parts
%if choice
  ChangeChoice(handle, $(number), $(which), Ord(values.$(id)$(part)), $(prefix)_$(id)_texts, Result);
%end
%if listed
  Change(handle, $(number), $(which), LongInt(Ord(values.$(id)$(part))), Result);
%end
%if plain
  Change(handle, $(number), $(which), values.$(id)$(part), Result);
%end
%end
%end
end;
%if embedded

const
  DefinitionLines: array[0..$(lastline)] of AnsiString = (
%each lines
    $(literal)$(comma)
%end
  );

function $(prefix)_read_definition(handle: Pointer): LongInt;
var
  text, line: AnsiString;
  used: SizeInt;
begin
  text := '';
  SetLength(text, $(size));
  used := 0;
  for line in DefinitionLines do
  begin
    if line <> '' then
      Move(line[1], text[used + 1], Length(line));
    used := used + Length(line);
  end;
  Result := optxv_read_definition_text(handle, $(file), PAnsiChar(text), used);
end;
%end

end.
)code";

}  // namespace

const language pascallanguage = {
    .name = "pascal",
    .rules =
        {.keywords =
             " absolute and array as asm begin bitpacked case class const constructor destructor "
             "dispinterface div do downto else end except exports file finalization finally for "
             "function generic goto if implementation in inherited initialization inline "
             "interface is label library mod nil not object of on operator or out packed "
             "procedure program property raise record reintroduce repeat resourcestring self set "
             "shl shr specialize string then threadvar to try type unit until uses var while "
             "with xor false true longint double boolean ansistring qword ",
         .cased = false,
         .longest = 120},
    .ownwords = "options list",
    .scoped = true,
    .ascending = true,
    .longestdecoration = 12,
    .longestprefix = 40,
    .comment = {"// ", "// ", "", ""},
    .textliteral = pascaltext,
    .realliteral = plainreal,
    .integerliteral = plaininteger,
    .booleans = {"false", "true"},
    .declarations = {{{"$(id): LongInt", "$(id): array[1..2] of LongInt"},
                      {"$(id): Double", "$(id): array[1..2] of Double"},
                      {"$(id): AnsiString", "$(id): array[1..2] of AnsiString"},
                      {"$(id): Boolean", "$(id): array[1..2] of Boolean"},
                      {"$(id): T$(prefix)_$(id)", "$(id): array[1..2] of T$(prefix)_$(id)"},
                      {"$(id): T$(prefix)_$(id)", "$(id): array[1..2] of T$(prefix)_$(id)"},
                      {"$(id): T$(prefix)_list", ""}}},
    .constant = "$(item)",
    .itemvalue = "T$(prefix)_$(id).$(constant)",
    .pairvalue = "($(first), $(second))",
    .listvalue = "nil",
    .parts = {"[1]", "[2]"},
    .skeleton = skeleton};

}  // namespace command
