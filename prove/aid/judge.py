"""What a run of the command may come to where something fails, and the count of what it did come to."""


class Tally:
    """What a part counts, and the faults, which it prints as it meets them."""

    def __init__(self, part, done):
        self.part, self.done = part, done
        self.failures = self.calls = self.faults = 0

    def add(self, name, failures, faults):
        self.calls += 1
        self.failures += failures
        self.faults += len(faults)
        for line in faults[:5]:
            print(f"{name}: {line}", flush=True)

    def end(self):
        """Prints the line of figures, and gives the exit status."""
        print(f"{self.part}: {self.failures:,} {self.done} in {self.calls:,} calls, {self.faults:,} faults")
        return 1 if self.faults else 0


def whole(run, base, folder):
    """What is wrong with the files after a run: each is as it was, or as it comes to be without a failure. A log is of
    its run, and not looked at."""
    for name in sorted(run.files.keys() | base.files.keys()):
        if name.endswith(".log"):
            continue
        if run.files.get(name) not in (folder.files.get(name), base.files.get(name)):
            yield f"the file {name} is {'left' if name not in base.files else 'neither old nor new'}"


def same(run, base):
    """Whether two runs came to the same; a log may say in more pieces what came in."""
    return (run.status, run.out, run.err, kept(run)) == (base.status, base.out, base.err, kept(base))


def kept(run):
    return {name: content for name, content in run.files.items() if not name.endswith(".log")}


def command_faults(run, base, folder, causes):
    """What is wrong with a run of the command in which something failed, in words. The causes are what may be told."""
    faults = list(whole(run, base, folder))
    if same(run, base):
        return faults
    if run.status != 2:
        said = f"{run.err[-200:]!r} {difference(run.out, base.out)}"
        return faults + [f"status {run.status} in place of {base.status}: {said}"]
    if not any(cause in run.err + run.out for cause in causes):
        faults.append(f"no sentence: {run.err[-300:]!r}")
    return faults


def difference(text, other):
    """The place where two texts begin to differ."""
    at = next((i for i, (a, b) in enumerate(zip(text, other)) if a != b), min(len(text), len(other)))
    return "" if text == other else f"{text[at:at + 40]!r} in place of {other[at:at + 40]!r}"
