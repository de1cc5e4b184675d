#include "Resrc.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

#include "StrLib.h"
#include "String.h"

namespace ZQV {

namespace {

bool beginsWithDigit(const char* text) {
  return text != nullptr && *text >= '0' && *text <= '9';
}

const char* sourceTag(int type) {
  switch (type) {
    case Resrc::FILE_SOURCE: return " (file): ";
    case Resrc::ENVIRONMENT: return " (env): ";
    case Resrc::COMMAND_LINE: return " (cmd): ";
    default: return "";
  }
}

}  // namespace

const Resrc::Item* Resrc::find(const char* name) const {
  if (name != nullptr) {
    for (const Item& item : items) {
      if (item.name == name) {
        return &item;
      }
    }
  }
  return nullptr;
}

Resrc::Item* Resrc::find(const char* name) {
  return const_cast<Item*>(static_cast<const Resrc*>(this)->find(name));
}

int Resrc::add(const char* name, const char* value, int type) {
  if (name == nullptr) {
    return 0;
  }
  std::optional<std::string> taken;
  if (value != nullptr) {
    taken = value;  // the value may lie inside the item that it replaces
  }
  Item* item = find(name);
  if (item == nullptr) {
    item = &items.emplace_back();
    item->name = name;
  }
  item->data = std::move(taken);
  item->type = type;
  return 1;
}

int Resrc::set(const char* name, const String& value) {
  return add(name, value.get(), PROGRAM);
}

int Resrc::join(const char* name, const char* value, char sep, bool before) {
  if (name == nullptr || value == nullptr) {
    return 0;
  }
  const std::string added = value;
  Item* item = find(name);
  if (item == nullptr) {
    return add(name, value, NONE);
  }
  const std::string between(1, sep == '\0' ? '\n' : sep);
  if (!item->data) {
    item->data = added;
  } else {
    item->data = before ? added + between + *item->data : *item->data + between + added;
  }
  return 1;
}

int Resrc::append(const char* name, const char* value, char sep) {
  return join(name, value, sep, false);
}

int Resrc::prepend(const char* name, const char* value, char sep) {
  return join(name, value, sep, true);
}

const char* Resrc::get(const char* name) const {
  const Item* item = find(name);
  if (item == nullptr) {
    return nullptr;
  }
  return item->data ? item->data->c_str() : "";
}

const char* Resrc::get(const char* name, const char* fallback) const {
  const char* value = get(name);
  return value != nullptr ? value : fallback;
}

int Resrc::getType(const char* name) const {
  const Item* item = find(name);
  return item == nullptr ? NONE : item->type;
}

bool Resrc::getBool(const char* name) const {
  const char* value = get(name);
  return value != nullptr && !StrLib::iequal(value, "no") && !StrLib::iequal(value, "off") &&
         !StrLib::iequal(value, "false");
}

float Resrc::get(const char* name, float fallback) const {
  const char* value = get(name);
  return beginsWithDigit(value) ? StrLib::toFloat(value) : fallback;
}

int Resrc::get(const char* name, int fallback) const {
  const char* value = get(name);
  return beginsWithDigit(value) ? StrLib::toInt(value) : fallback;
}

int Resrc::scanf(const char* name, const char* format, ...) const {
  const char* value = get(name);
  if (value == nullptr) {
    return 0;
  }
  va_list args;
  va_start(args, format);
  const int n = std::vsscanf(value, format, args);
  va_end(args);
  return n;
}

int Resrc::getValues(String& name, String& value, int flag) {
  if (flag == 0) {
    rewind();
  }
  name.clear();
  value.clear();
  if (cur >= items.size()) {
    return 0;
  }
  const Item& item = items[cur++];
  name.copy(item.name.c_str());
  value.copy(item.data ? item.data->c_str() : "");
  return 1;
}

const char* Resrc::getNext() {
  return cur < items.size() ? items[cur++].name.c_str() : nullptr;
}

void Resrc::print(const char* name) const {
  const char* value = get(name);
  if (value == nullptr) {
    std::printf("%s: not set\n", name != nullptr ? name : "");
  } else {
    std::printf("%s: %s\n", name, value);
  }
}

void Resrc::printAll() const {
  for (const Item& item : items) {
    std::printf("%s%s%s\n", item.name.c_str(), sourceTag(item.type),
                item.data ? item.data->c_str() : "");
  }
}

void Resrc::clear() {
  items.clear();
  cur = 0;
}

}  // namespace ZQV
