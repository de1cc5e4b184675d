#!/usr/bin/env python3
"""Compares the documents with the program.

  tools/check_docs.py PROGRAM

Every option that PROGRAM -h prints, every parameter word, input type, device word and key in the
sources, and every storm variable must be in docs/reference.toml and with that on a manual page; the
reference must have none that the sources don't; and no page, README or guide may use an option that
doesn't exist. Links between documents must lead somewhere, completion must complete, and mandoc,
where it is installed, must be content with the pages. Prints what is wrong and ends with 1.
"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
import make_docs

ROOT = make_docs.ROOT
PROSE = ("README.md", "CONTRIBUTING.md", "CHANGELOG.md", "docs/guide.md", "docs/formats.md",
         "docs/limits.md")
# Written as options without being in the help text: long names, and one that the documents give as an
# example of what isn't known.
ALSO = {"help", "title", "tit"}
# What is typed, and what bash makes of its last word.
COMPLETIONS = (
    (["-strict", "-i"], "-it -in -if -id -ip -ic"),
    (["-in", "lev"], "lev2 lev2z"),
    (["-in", "nids", "-pa", "site,cl"], "site,clutter"),
    (["-in", "lev2z", "-pa", "rang"], "range="),
    (["-de", "ps,out.ps,lan"], "ps,out.ps,land"),
    (["-device", "me"], "meta"),
    (["-va", "comp,tra"], "comp,track"),
    (["-in", "nids", "sam"], ""),
)


def source(name):
    path = ROOT / "lib" / (name + ".cpp")
    return path.read_text() if path.exists() else None


def code_words(text):
    """Parameter words that a source compares items with."""
    words = re.findall(r'\bitems\.i?equal\(i, "([^"]+)"', text)
    words += re.findall(r'\bbegins\("([^"]+)"\)', text)
    for table in re.findall(r'\btypes\[\] = \{("[^{}]*)\};|\bPAPERS\[\] = (\{\{.*?\}\});', text, re.S):
        words += re.findall(r'"([^"]+)"', "".join(table))
    return {w.rstrip("=") for w in words}


def compare(what, documented, real, problems):
    problems += [f"{what} {w} is in no document" for w in sorted(real - documented)]
    problems += [f"{what} {w} is documented and doesn't exist" for w in sorted(documented - real)]


def check_words(reference, problems):
    """Sources against the sets of words. A set is left alone as long as its sources don't exist."""
    sets = [(s["title"], s["code"], s["word"]) for s in reference["words"]]
    sets += [("device " + d["word"], d["code"], d["words"]) for d in reference["device"]]
    by_source = {}
    for title, names, words in sets:
        stems = {make_docs.stem(w["form"]) for w in words}
        texts = [source(n) for n in names]
        for name in names:
            by_source.setdefault(name, set()).update(stems)
        if all(texts):
            real = set().union(*map(code_words, texts))
            # "cof" is what a user writes where the source compares two characters of it.
            problems += [f"{title}: {w} is documented and isn't in {', '.join(names)}"
                         for w in sorted(stems - real) if not any(w[:n] in real for n in (2, 3))]
    for path in sorted((ROOT / "lib").glob("*.cpp")):
        real = code_words(path.read_text())
        missing = real - by_source.get(path.stem, set())
        # Events of a window aren't words of a user.
        problems += [f"lib/{path.name}: the word {w} is in no set of words of the reference"
                     for w in sorted(missing) if "-" not in w]


def check_options(reference, program, problems):
    text = subprocess.run([program, "-h"], capture_output=True, text=True, check=True,
                          env={"zqvdefault": "/nonexistent"}).stdout
    real = set(re.findall(r"^ -(\w+)", text, flags=re.M))
    documented = {o["key"] for o in make_docs.options(reference)}
    compare("option", {"-" + k for k in documented}, {"-" + k for k in real}, problems)
    rows = {key: (name, env) for name, env, key in
            re.findall(r'\{"(\w+)", "(\w+)", "(\w+)",', source("ZqvResrc"))}
    for o in make_docs.options(reference):
        name, env = rows.get(o["key"], (o["name"], o.get("env")))
        if (name, env) != (o["name"], o.get("env")):
            problems.append(f"option -{o['key']} is {name}, {env}, documented as "
                            f"{o['name']}, {o.get('env')}")
    for own in reference["own"]:
        for key in own["keys"]:
            if f'"{key}"' not in (ROOT / "src" / "scopeview.cpp").read_text():
                problems.append(f"option {key} is documented and doesn't exist")
    return real | {k.lstrip("-") for own in reference["own"] for k in own["keys"]} | ALSO


def check_tables(reference, problems):
    rows = re.search(r"rows\[\] = \{(.*?)\};", source("ScopeView"), flags=re.S).group(1)
    compare("input type", {n for i in reference["input"] for n in i["names"]} - {"nowrad", "kavrad"},
            set(re.findall(r'\{"(\w+)"', rows)), problems)
    real = set()
    for name in ("Plot", "Figure", "XWindow"):
        real |= set(re.findall(r'"(Ret|.-Alt)"', source(name)))
    compare("key", {k["event"] for k in reference["key"]}, real, problems)
    for v in reference["variables"]:
        if "file" in v:
            lines = (ROOT / v["file"]).read_text().splitlines()
            compare("variable", {w["form"] for w in v["name"]},
                    {line.split()[0] for line in lines if line and line[0] != "#"}, problems)
    environment = {e["name"] for e in reference["environment"]}
    for path in sorted((ROOT / "lib").glob("*.cpp")):
        problems += [f"lib/{path.name}: the variable {name} is in no document"
                     for name in re.findall(r'getenv\("(\w+)"', path.read_text())
                     if name not in environment and name not in ("HOME", "USER")]


def check_pages(reference, problems):
    """The pages as they are made have all that the reference has, and no more options."""
    pages = {page: make_docs.to_man(make_docs.fill_in(
        (ROOT / "docs" / "man" / (page + ".md")).read_text(), reference), *page.rsplit(".", 1))
        for page in make_docs.PAGES}
    text = pages["scopeview.1"].replace("\\-", "-").replace("\\fI", "").replace("\\fR", "")
    text = text.replace("\\fB", "").replace("\\(ha", "^")
    wanted = ["-" + o["key"] for o in make_docs.options(reference)]
    wanted += [w["form"].replace("*", "") for s in reference["words"] for w in s["word"]
               if not w.get("idle") and not w.get("part")]
    lines = set(text.splitlines())
    heads = {re.split(r"[\s,]", line)[0] for line in lines}
    problems += [f"scopeview.1 has no {w}" for w in wanted if w not in lines and w not in heads]
    for page, made in pages.items():
        if "{{" in made:
            problems.append(f"{page}: a table that doesn't exist")
        check_form(page, made, problems)


def check_completion(reference, problems):
    with tempfile.TemporaryDirectory() as folder:
        script = pathlib.Path(folder) / "scopeview.bash"
        script.write_text(make_docs.bash(reference))
        for words, expected in COMPLETIONS:
            line = ["scopeview", *words]
            run = subprocess.run(
                ["bash", "-c", 'source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); '
                 '_scopeview; echo "${COMPREPLY[*]}"', "bash", str(script), *line],
                capture_output=True, text=True, check=False)
            if run.stdout.strip() != expected or run.stderr:
                problems.append(f"completion of {' '.join(line)}: {run.stdout}{run.stderr}")
        if shutil.which("zsh"):
            script.write_text(make_docs.zsh(reference))
            run = subprocess.run(["zsh", "-n", script], capture_output=True, text=True, check=False)
            problems += [run.stderr] if run.returncode else []


def check_form(page, made, problems):
    """What mandoc has to say about the macros of a page."""
    if shutil.which("mandoc"):
        run = subprocess.run(["mandoc", "-Tlint"], input=made, capture_output=True, text=True,
                             check=False)
        problems += [f"{page}: {line}" for line in run.stdout.splitlines()]


def used_options(text):
    """Options in `code`, and on lines that run the program."""
    for span in re.findall(r"`(-[a-z][^`]*)`", text):
        yield re.match(r"-([a-zA-Z]+)", span).group(1)
    for line in text.splitlines():
        for command in re.split(r"[|;&]", line):
            if re.search(r"(^|[\s/$({])scopeview\s", command) and "#include" not in command:
                code = re.split(r"\s#|`", command.split("scopeview", 1)[1])[0]
                yield from re.findall(r"(?<=\s)--?([a-zA-Z]+)(?=[\s=]|$)", code)


def check_prose(known, problems):
    names = [f"docs/man/{page}.md" for page in make_docs.PAGES] + list(PROSE)
    for name in names:
        path = ROOT / name
        text = path.read_text()
        problems += [f"{name}: no option -{key}" for key in sorted(set(used_options(text)) - known)]
        for link in re.findall(r"\]\(([^)#:]+)(?:#[^)]*)?\)", text):
            if not (path.parent / link).exists() and not link.startswith("build/"):
                problems.append(f"{name}: the link {link} leads nowhere")


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    reference = make_docs.load()
    problems = []
    known = check_options(reference, sys.argv[1], problems)
    check_words(reference, problems)
    check_tables(reference, problems)
    check_pages(reference, problems)
    check_completion(reference, problems)
    check_prose(known, problems)
    for problem in problems:
        print("check_docs:", problem)
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
