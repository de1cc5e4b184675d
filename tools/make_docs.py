#!/usr/bin/env python3
"""Makes the manual pages and the completion of the shells.

  tools/make_docs.py OUTDIR

docs/reference.toml says what the program understands, docs/man/NAME.SECTION.md is the prose of a
page. A page is in a small part of Markdown: headings "#" and "##", paragraphs, "- " lists, "```"
blocks, and terms with a line ": explanation" below them; `so` is bold and *so* italic. A line
{{table}} stands for a table of the reference. The date is that of the newest release in CHANGELOG.md. OUTDIR gets scopeview.1 and the pages of section 5,
scopeview.bash and _scopeview.
"""

import argparse
import pathlib
import re
import textwrap
import tomllib

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAGES = ("scopeview.1", "zqv.cfg.5", "name.cnv.5", "zqv.map.5", "zqv.clr.5")


def load():
    with open(ROOT / "docs" / "reference.toml", "rb") as source:
        return tomllib.load(source)


def options(reference):
    return [option for group in reference["group"] for option in group["option"]]


def stem(form):
    """The part of a word that is compared: "dist[=*km*]" is "dist", "lo=*logo*" is "lo"."""
    return re.match(r"[^=\[*]+", form).group()


# Tables of the reference, as Markdown.

def term(head, text):
    return f"{head}\n: {text}\n"


def coded(form):
    """A form with its fixed parts marked: dist[=*km*] becomes `dist`[`=`*km*]."""
    parts = re.split(r"(\*[^*]+\*|[][]|\.\.\.)", form)
    return "".join(p if not p or p[0] in "*[]" or p == "..." else f"`{p}`" for p in parts)


def word_terms(words):
    shown = [w for w in words if not w.get("idle") and not w.get("part")]
    idle = [f"`{stem(w['form'])}`" for w in words if w.get("idle")]
    lines = [term(coded(w["form"]), w["text"]) for w in shown]
    if idle:
        lines.append("Accepted without effect: " + ", ".join(idle) + ".\n")
    return lines


def table_options(reference):
    out = []
    for group in reference["group"]:
        out.append(f"## {group['title']}\n")
        if "text" in group:
            out.append(group["text"] + "\n")
        for o in group["option"]:
            head = f"`-{o['key']}`" + (f" *{o['arg']}*" if "arg" in o else "")
            env = f", `{o['env']}`" if "env" in o else ""
            out.append(term(head, f"{o['text']} (`{o['name']}`{env})"))
    return out


def table_own(reference):
    return [term(", ".join(f"`{k}`" for k in own["keys"]), own["text"]) for own in reference["own"]]


def table_inputs(reference):
    return [term(", ".join(f"`{n}`" for n in i["names"]), i["text"]) for i in reference["input"]]


def table_variables(reference):
    out = []
    for v in reference["variables"]:
        out += [f"## -va with -in {v['input']}\n", v["text"] + "\n"]
        out += [term(coded(w["form"]), w["text"]) for w in v["name"]]
    return out


def table_words(reference):
    out = []
    for s in reference["words"]:
        out.append(f"## {s['title']}\n")
        out += word_terms(s["word"])
    return out


def table_devices(reference):
    out = []
    for d in reference["device"]:
        out += [f"## {d['word']}: {d['title']}\n", d["text"] + "\n"]
        out += word_terms(d["words"])
    return out


def table_keys(reference):
    return [term(f"`{k['keys']}`", k["text"]) for k in reference["key"]]


def table_environment(reference):
    return [term(f"`{e['name']}`", e["text"]) for e in reference["environment"]]


def table_status(reference):
    return [term(f"`{s['code']}`", s["text"]) for s in reference["status"]]


def table_projections(reference):
    return [term(", ".join(f"`{n}`" for n in p["names"]), p["text"])
            for p in reference["projection"]]


def table_resources(reference):
    return [term(f"`{o['name']}`", f"`-{o['key']}`" + (f", `{o['env']}`" if "env" in o else ""))
            for o in sorted(options(reference), key=lambda o: o["name"])]


def fill_in(text, reference):
    def table(match):
        return "\n".join(globals()["table_" + match.group(1)](reference))
    return re.sub(r"^\{\{(\w+)\}\}$", table, text, flags=re.M)


# Markdown to the man macros.

def escape(text):
    # Quotes, carets and tildes become other characters in print unless they are named.
    text = text.replace("\\", "\\e")
    for char, name in (("-", "\\-"), ("'", "\\(aq"), ("`", "\\(ga"), ("^", "\\(ha"), ("~", "\\(ti")):
        text = text.replace(char, name)
    return text


def inline(text):
    out = []
    for part in re.split(r"(`[^`]+`|(?<!\w)\*[^*\s][^*]*\*)", text):
        if len(part) > 2 and part[0] == part[-1] == "`":
            out.append("\\fB" + escape(part[1:-1]) + "\\fR")
        elif len(part) > 2 and part[0] == part[-1] == "*":
            out.append("\\fI" + escape(part[1:-1]) + "\\fR")
        else:
            out.append(re.sub(r"\b([a-z.]+)\((\d)\)",
                              lambda m: f"\\fB{escape(m.group(1))}\\fR({m.group(2)})",
                              escape(part)))
    line = "".join(out).replace("\\fR\\fB", "\\fB").replace("\\fR\\fI", "\\fI")
    return "\\&" + line if line[:1] in ".'" else line


def sentences(text):
    """Each sentence on a line of its own, as typesetters of manual pages want it, or on several."""
    joined = " ".join(text.split())
    out = []
    for sentence in re.split(r"(?<=[a-zA-Z0-9)`*][.:?]) (?=[A-Z`*])", joined):
        for line in textwrap.wrap(inline(sentence), 78, break_long_words=False,
                                  break_on_hyphens=False):
            out.append("\\&" + line if line[:1] in ".'" else line)
    return "\n".join(out)


def release():
    """Version and date of the newest release in the change log."""
    return re.search(r"^## (\S+) \((\d{4}-\d\d-\d\d)\)", (ROOT / "CHANGELOG.md").read_text(),
                     flags=re.M).groups()


def to_man(text, name, section):
    version, date = release()
    out = [f'.TH {name.upper()} {section} {date} "scopeview {version}" "scopeview"', ".nh", ".ad l"]
    blocks = re.split(r"\n{2,}", text.strip())
    fresh = True  # right behind a heading, where a paragraph needs no macro
    while blocks:
        block = blocks.pop(0)
        if block.startswith("```"):
            while not block.endswith("\n```"):
                block += "\n\n" + blocks.pop(0)
            lines = [escape(line) for line in block.split("\n")[1:-1]]
            lines = ["\\&" + s if s[:1] in ".'" else s for s in lines]
            out += [".PP" if not fresh else None, ".RS 4", ".nf", *lines, ".fi", ".RE"]
        elif block.startswith("# "):
            out.append(".SH " + block[2:])
            fresh = True
            continue
        elif block.startswith("## "):
            out.append('.SS "' + escape(block[3:]) + '"')
            fresh = True
            continue
        elif block.startswith("- "):
            for item in re.split(r"^- ", block, flags=re.M)[1:]:
                out += ['.IP "\\(bu" 2', sentences(item)]
        elif re.search(r"^: ", block, flags=re.M):
            head, body = re.split(r"\n: ", block, maxsplit=1)
            out += [".TP", inline(head), sentences(body)]
        else:
            out += [".PP" if not fresh else None, sentences(block)]
        fresh = False
    return "\n".join(line for line in out if line is not None) + "\n"


# Completion. The kinds of values that the reference names.

def values(reference):
    """Fixed choices of each kind of value."""
    draw = ("plot data map text text_ul text_uc text_ur text_ll text_lc text_lr bord all none")
    levels = ["none", "print", "error", "warn", "mess"]
    levels += [f"out{i}" for i in range(1, 9)] + [f"debug{i}" for i in range(1, 9)] + ["debug"]
    variables = []
    for v in reference["variables"]:
        stems = [stem(w["form"]) for w in v["name"]]
        variables += [s + "1" for s in stems] if v["input"] == "lev2" else stems
    return {
        "input": [n for i in reference["input"] for n in i["names"]],
        "output": ["png:", "gif:"],
        "device": [d["word"] for d in reference["device"]],
        "draw": draw.split(),
        "message": levels,
        "variable": sorted(set(variables)),
        "date": ["la", "la-1"],
        "domain": [n for p in reference["projection"] for n in p["names"]] + ["us", "globe"],
        "convention": ["nids", "lev2", "rcm_cvt", "rad_cvt", "mdr_site", "image"],
        "color": "white black red green blue yellow cyan magenta brown orange tan gray".split(),
        "map": ["zqv.map", "cont.map", "country.map", "us_states.map", "us_counties.map", "none"],
        "plot": ["ln", "dln", "ndln", "cf", "lcf", "value", "none"],
    }


def params(reference):
    """Words of -pa, a "=" behind those that need a value, by input type."""
    sets = {s["id"]: s for s in reference["words"]}

    def words(names):
        found = set()
        for w in (w for n in names for w in sets[n]["word"]):
            if not w.get("idle") and not w.get("part"):
                s = stem(w["form"])
                found.add(s + "=" if w["form"][len(s):len(s) + 1] == "=" else s)
        return sorted(found)

    common = ["run", "plot", "map"]
    by_input = {n: words(common + i["words"]) for i in reference["input"] for n in i["names"]}
    return by_input, words(sets)


def device_words(reference):
    return {d["word"]: [stem(w["form"]) + ("=" if "=" in w["form"] else "") for w in d["words"]]
            for d in reference["device"]}


BASH = r'''# Completion of scopeview for bash.

_scopeview() {
  local cur prev words cword
  # "=" and ":" belong to a word here.
  if declare -F _get_comp_words_by_ref >/dev/null; then
    _get_comp_words_by_ref -n =: cur prev words cword
  else
    cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}
    words=("${COMP_WORDS[@]}") cword=$COMP_CWORD
  fi
  local key=${prev#-} head= choices= input= i
  COMPREPLY=()
  key=${key#-}
  for ((i = 1; i < cword; i++)); do
    [[ ${words[i]} == -in || ${words[i]} == --in || ${words[i]} == -input ]] && input=${words[i + 1]}
  done
  [[ $prev == -* ]] || key=
  if [[ $cur == -* ]]; then
    COMPREPLY=($(compgen -W "@keys@" -- "$cur"))
    return
  fi
  # Of a list, the last item is completed.
  [[ $cur == *,* ]] && head=${cur%,*},
  local last=${cur##*,}
  case $key in
@cases@
  esac
  for i in $(compgen -W "$choices" -- "$last"); do COMPREPLY+=("$head$i"); done
  if [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *[=:] ]]; then compopt -o nospace 2>/dev/null; fi
  # What the colon splits is already there.
  if [[ $cur == *:* ]] && declare -F __ltrim_colon_completions >/dev/null; then
    __ltrim_colon_completions "$cur"
  fi
}
complete -o default -F _scopeview scopeview
'''


def bash(reference):
    fixed = values(reference)
    by_input, every = params(reference)
    cases = []

    def case(names, body):
        cases.append(f"    {'|'.join(names)})\n{body}\n      ;;")

    for o in options(reference):
        kind = o.get("value")
        names = [o["key"]] + ([o["name"]] if o["name"] != o["key"] else [])
        if kind == "param":
            lines = ["      case $input in"]
            for name, found in by_input.items():
                lines.append(f"        {name}) choices=\"{' '.join(found)}\" ;;")
            lines += [f"        *) choices=\"{' '.join(every)}\" ;;", "      esac"]
            case(names, "\n".join(lines))
        elif kind == "device":
            lines = ["      case $cur in"]
            for word, found in device_words(reference).items():
                if found:
                    lines.append(f"        {word},*) choices=\"{' '.join(found)}\" ;;")
            lines += [f"        *) choices=\"{' '.join(fixed[kind])}\" ;;", "      esac"]
            case(names, "\n".join(lines))
        elif kind == "dir":
            case(names, "      compopt -o dirnames 2>/dev/null; return")
        elif kind in fixed:
            case(names, f"      choices=\"{' '.join(fixed[kind])}\"")
    case(["*"], "      return  # files, by the default of the shell")
    keys = [f"-{o['key']}" for o in options(reference)]
    keys += [k for own in reference["own"] for k in own["keys"]] + ["-help", "--help"]
    return BASH.replace("@keys@", " ".join(keys)).replace("@cases@", "\n".join(cases))


def plain(text):
    """A text as the short help of zsh: its first sentence, without marks."""
    text = re.split(r"(?<=[a-z)])[.:;] ", re.sub(r"[`*]", "", text))[0].rstrip(".")
    return re.sub(r"(['\[\]:\\])", lambda m: {"'": "'\\''"}.get(m.group(), "\\" + m.group()), text)


def zsh(reference):
    fixed = values(reference)
    by_input, every = params(reference)
    lines = ["#compdef scopeview", "", "# Completion of scopeview for zsh.", "", "_scopeview_params() {",
             "  local -a choices", "  local i input",
             "  for ((i = 2; i < CURRENT; i++)); do",
             "    [[ $words[i] == (-in|--in|-input) ]] && input=$words[i+1]", "  done",
             "  case $input in"]
    for name, found in by_input.items():
        lines.append(f"    {name}) choices=({' '.join(found)}) ;;")
    lines += [f"    *) choices=({' '.join(every)}) ;;", "  esac",
              "  compset -P '*,'", "  compadd -S '' -- $choices", "}", "", "_scopeview_device() {",
              "  local -a choices", "  case $PREFIX in"]
    for word, found in device_words(reference).items():
        if found:
            lines.append(f"    {word},*) choices=({' '.join(found)}) ;;")
    lines += [f"    *) choices=({' '.join(fixed['device'])}) ;;", "  esac", "  compset -P '*,'",
              "  compadd -S '' -- $choices", "  _files", "}", "", "_arguments \\"]
    action = {"param": "_scopeview_params", "device": "_scopeview_device", "dir": "_files -/",
              "file": "_files", "free": " "}
    for o in options(reference):
        value = ""
        if "arg" in o:
            kind = o["value"]
            act = action.get(kind)
            if act is None:
                choices = " ".join(c.replace(":", "\\:") for c in fixed[kind])
                act = f"_values -s , {o['arg']} {choices}" if kind in ("draw", "variable", "map") \
                    else f"({choices})"
            value = f":{o['arg']}:{act}"
        lines.append(f"  '-{o['key']}[{plain(o['text'])}]{value}' \\")
    for own in reference["own"]:
        for k in own["keys"]:
            lines.append(f"  '{k}[{plain(own['text'])}]' \\")
    lines.append("  '*:file:_files'")
    return "\n".join(lines) + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("outdir", type=pathlib.Path)
    args = parser.parse_args()
    reference = load()
    args.outdir.mkdir(parents=True, exist_ok=True)
    for page in PAGES:
        name, section = page.rsplit(".", 1)
        text = (ROOT / "docs" / "man" / (page + ".md")).read_text()
        (args.outdir / page).write_text(
            to_man(fill_in(text, reference), name, section))
    (args.outdir / "scopeview.bash").write_text(bash(reference))
    (args.outdir / "_scopeview").write_text(zsh(reference))


if __name__ == "__main__":
    main()
