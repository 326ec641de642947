"""The lines of the command that are walked, with the files that they find, and what a run of one may come to."""

import json
from pathlib import Path

EXAMPLES = Path("examples")
FOLDER = "walked"

MISTAKES = "iteration_limt 5000\ntime_limit -1\nmethod = newton\nlog_file = \"the \"big\" run.log\"\nprint_level 3\n"
NEWER = "Normal lookup\ntime_limit double 101 100 0 1000 1 1 Time limit\nthreads integer 103 1 1 64 12 1 Threads\n"
TABLE = """name,type,default,low,high,group,text
steplim,integer,100,0,1000,Limits,Step limit
method,enumstr,primal,,,,Method
"""
BOUND = {"definitions": [{"definition": "solver.def", "files": ["*.opt"]}]}


def files():
    """The files of the folder that each line is run in."""
    parameters = (EXAMPLES / "solver.opt").read_text().replace("examples/", "")
    return {"solver.def": (EXAMPLES / "solver.def").read_bytes(), "solver.opt": parameters,
            "tight.opt": (EXAMPLES / "tight.opt").read_bytes(), "faulty.opt": MISTAKES,
            "other.opt": "threads 4\n", "naming.opt": "read \"missing.opt\"\n",
            "newer.def": NEWER, "table.csv": TABLE, "set.json": '{"time_limit": 9, "threads": 2}\n',
            "optxv.json": json.dumps(BOUND), "old.out": "what was there before\n"}


def framed(method, params, number=None):
    message = {"jsonrpc": "2.0", "method": method, "params": params} | ({} if number is None else {"id": number})
    content = json.dumps(message)
    return f"Content-Length: {len(content)}\r\n\r\n{content}"


def conversation(folder):
    """What an editor sends that opens a file, asks some questions about it and goes."""
    uri = (folder / "faulty.opt").absolute().as_uri()
    here = {"textDocument": {"uri": uri}, "position": {"line": 0, "character": 3}}
    layout = {"textDocument": {"uri": uri}, "options": {"tabSize": 2, "insertSpaces": True}}
    opened = {"textDocument": {"uri": uri, "languageId": "optxv-parameters", "version": 1, "text": MISTAKES}}
    asked = [("completion", here), ("hover", here), ("definition", here), ("documentSymbol", here),
             ("formatting", layout)]
    root = folder.absolute().as_uri()
    return "".join([framed("initialize", {"processId": None, "rootUri": root, "capabilities": {}}, 1),
                    framed("initialized", {}), framed("textDocument/didOpen", opened)] +
                   [framed("textDocument/" + name, params, 2 + at) for at, (name, params) in enumerate(asked)] +
                   [framed("shutdown", None, 9), framed("exit", None)])


# Words of a line, with what stands at standard input after <.
LINES = """
check solver.def solver.opt faulty.opt
check --json solver.def faulty.opt
check --format sarif solver.def faulty.opt
check --format github solver.def faulty.opt
check
check solver.def - < faulty.opt
lint solver.def
lint --format gcc --select P,D solver.def solver.opt
show solver.def solver.opt
show --all --origin --json solver.def solver.opt
origin solver.def solver.opt
origin --json solver.def solver.opt --name threads
diff solver.def solver.opt other.opt
diff --json --definitions solver.def newer.def
fix solver.def faulty.opt
fix --write --lint P solver.def faulty.opt solver.opt
format solver.def solver.opt
format --write --sort group solver.def solver.opt faulty.opt
format --write --definitions solver.def newer.def
format --check solver.def solver.opt
convert solver.def other.opt --to json -o old.out
convert solver.def set.json --to parameters
write solver.def solver.opt -o old.out
write solver.def solver.opt -o /dev/stdout
write solver.def solver.opt -o solver.opt
write solver.def solver.opt -o tight.opt
write solver.def other.opt missing.opt
check solver.def naming.opt
help solver.def
help solver.def 15
help solver.def --search limit
html solver.def -o old.out
html solver.def
include solver.def -o new.out
generate solver.def --lang c -o old.out
generate solver.def --lang c++ --embed
generate solver.def --lang python
generate solver.def --lang fortran
generate solver.def --lang pascal
definition solver.def -o old.out
definition --from table.csv -o new.out
schema solver.def -o old.out
reference solver.def -o site
reference solver.def --markdown -o old.out
reference solver.def --man -o new.out
api
api --json
complete bash
complete bash -- 2 optxv show solver.def
complete zsh --host solver --definition solver.def
lsp --log lsp.log < lsp
--subcommands
--help
--version
nonsense
""".strip().splitlines()


def words(line):
    return line.split(" < ")[0].split()


def stdin(line, folder):
    source = line.partition(" < ")[2]
    if source == "lsp":
        return conversation(folder.path).encode()
    return folder.files[source] if source else b""
