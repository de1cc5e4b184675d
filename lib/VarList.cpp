#include "VarList.h"

#include <cstdio>

#include "File.h"
#include "FileTool.h"
#include "StrLib.h"
#include "String.h"
#include "Strings.h"
#include "Tools.h"
#include "Zqv.h"

namespace ZQV {

namespace {

/** A field of the list file; "-" stands for none. */
const char* field(const char* text) {
  return StrLib::equal(text, "-") ? "" : text;
}

}  // namespace

void VarList::init() {
  known.clear();
  entries.clear();
}

int VarList::readFile(const char* name) {
  String path;
  FileTool::addPath(Zqv::getDatabasePath(), name, path);
  File file;
  if (file.openPlain(path.get()) == 0) {
    return 0;
  }
  char line[256];
  for (int length = file.getLine(line, sizeof(line)); length > 0;
       length = file.getLine(line, sizeof(line))) {
    if (line[length - 1] != '\n' && !file.endFile()) {
      file.skipLine();
    }
    StrLib::trimWS(line);
    char var[32] = "";
    char units[32] = "";
    char format[80] = "";
    Entry entry;
    int used = 0;
    if (line[0] == '#' ||
        std::sscanf(line, "%31s %31s %79s %d %n", var, units, format, &entry.layer, &used) < 4) {
      continue;
    }
    entry.spec.setVar(Variable(var, field(units), used > 0 ? field(line + used) : ""));
    entry.format = field(format);
    known.push_back(entry);
  }
  return 1;
}

int VarList::decode(const char* text) {
  entries.clear();
  const Strings items(text, ',');
  for (int i = 0; i < items.getNum(); i++) {
    const Strings parts(items.getString(i), ':');
    if (!parts.valid(0)) {
      continue;
    }
    Entry entry;
    entry.spec.setVar(Variable(parts.getString(0)));
    for (const Entry& row : known) {
      if (StrLib::iequal(row.spec.getVar().getName(), parts.getString(0))) {
        entry = row;
        break;
      }
    }
    // The name stays as it was written: some renderers tell case apart.
    Variable var = entry.spec.getVar();
    var.set(parts.getString(0));
    for (int k = 1; k < parts.getNum(); k++) {
      const char* value = parts.getStringAfter(k, '=');
      if (parts.iequal(k, "un=", 3)) {
        var.setUnits(value);
      } else if (parts.iequal(k, "fm=", 3)) {
        entry.format = StrLib::acopy(value);
      } else if (parts.iequal(k, "lb=", 3)) {
        var.setLabel(value);
      } else if (parts.iequal(k, "la=", 3) && Tools::isInt(value)) {
        entry.layer = StrLib::toInt(value);
      }
    }
    entry.spec.setVar(var);
    entries.push_back(entry);
  }
  return entries.empty() ? 0 : 1;
}

const VarList::Entry& VarList::at(int i) const {
  static const Entry none;
  return i >= 0 && i < getNum() ? entries[static_cast<size_t>(i)] : none;
}

const char* VarList::getName(int i) const {
  return at(i).spec.getVar().getName();
}

const char* VarList::getUnits(int i) const {
  return at(i).spec.getUnits();
}

const char* VarList::getFormat(int i) const {
  return at(i).format.c_str();
}

int VarList::getLayer(int i) const {
  return at(i).layer;
}

const VarSpec& VarList::getSpec(int i) const {
  return at(i).spec;
}

bool VarList::isMap(int i) const {
  return StrLib::iequal(getName(i), "map");
}

void VarList::print() const {
  for (int i = 0; i < getNum(); i++) {
    std::printf("%s %s %s %d %s\n", getName(i), getUnits(i), getFormat(i), getLayer(i),
                getSpec(i).getVar().getLabel());
  }
}

}  // namespace ZQV
