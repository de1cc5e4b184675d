#include "Hash.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Const.h"
#include "StrLib.h"

namespace ZQV {

namespace {
constexpr int max_chains = 1 << 20;
}

int Hash::set(int kind, int table_size, int bytes, int keys) {
  type = kind;
  size = std::clamp(table_size, 1, max_chains);
  data_size = std::max(bytes, 0);
  numkey = std::clamp(keys, 1, MAX_KEYS);
  clear();
  return 1;
}

void Hash::clear() {
  entries.clear();
  cur = 0;
  for (int k = 0; k < MAX_KEYS; k++) {
    table[static_cast<size_t>(k)].assign(k < numkey ? static_cast<size_t>(size) : 0, {});
  }
}

int Hash::key(const char* text) const {
  int h = 0;
  for (const char* p = text; p != nullptr && *p != '\0'; p++) {
    h = (h * 257 + static_cast<signed char>(*p)) % 35177;
  }
  const int chain = h % size;
  return chain < 0 ? chain + size : chain;  // bytes of 128 and up can leave h negative
}

const Hash::Node* Hash::find(int k, const char* text) const {
  if (text == nullptr || k < 0 || k >= numkey) {
    return nullptr;
  }
  for (const Node& node : table[static_cast<size_t>(k)][static_cast<size_t>(key(text))]) {
    if (node.key == text) {
      return &node;
    }
  }
  return nullptr;
}

void Hash::store(Entry& entry, const void* value) const {
  const char* bytes = static_cast<const char*>(value);
  size_t size_of = 0;
  if (type >= 1 && type <= 3) {
    size_of = sizeof(int);
  } else if (data_size > 0) {
    size_of = static_cast<size_t>(data_size);
  } else if (bytes != nullptr) {
    size_of = std::strlen(bytes);
  }
  entry.data.assign(size_of + 1, '\0');  // always terminated, whoever reads it as a text
  if (bytes != nullptr) {
    std::copy(bytes, bytes + size_of, entry.data.begin());
  }
}

int Hash::enterKeys(const std::array<const char*, MAX_KEYS>& keys, int given, const void* value) {
  if (given < numkey || std::any_of(keys.begin(), keys.begin() + numkey,
                                    [](const char* k) { return k == nullptr; })) {
    return 0;
  }
  bool known = true;
  for (int k = 0; k < numkey; k++) {
    known = known && find(k, keys[static_cast<size_t>(k)]) != nullptr;
  }
  if (known) {
    store(entries[find(0, keys[0])->entry], value);
    return 1;
  }
  Entry entry;
  store(entry, value);
  for (int k = 0; k < numkey; k++) {
    const char* text = keys[static_cast<size_t>(k)];
    entry.keys[static_cast<size_t>(k)] = text;
    // At the end of its chain: search stops at the first equal key, so a known one keeps its entry.
    table[static_cast<size_t>(k)][static_cast<size_t>(key(text))].push_back({text, entries.size()});
  }
  entries.push_back(std::move(entry));
  return 1;
}

int Hash::enter(const char* key0, const void* value) {
  return enterKeys({key0, nullptr, nullptr, nullptr}, 1, value);
}

int Hash::enter(const char* key0, const char* key1, const void* value) {
  return enterKeys({key0, key1, nullptr, nullptr}, 2, value);
}

int Hash::enter(const char* key0, const char* key1, const char* key2, const void* value) {
  return enterKeys({key0, key1, key2, nullptr}, 3, value);
}

int Hash::enter(const char* key0, const char* key1, const char* key2, const char* key3,
                const void* value) {
  return enterKeys({key0, key1, key2, key3}, 4, value);
}

int Hash::enterInt(const char* text, int value) {
  return enter(text, &value);
}

int Hash::enterFloat(const char* text, float value) {
  return enter(text, &value);
}

const char* Hash::search(int k, const char* text) const {
  const Node* node = find(k, text);
  return node == nullptr ? nullptr : entries[node->entry].data.data();
}

int Hash::searchInt(const char* text) const {
  const char* found = search(text);
  if (found == nullptr) {
    return Const::MISS;
  }
  if (type != 1 && type != 2) {
    return data_size > 0 ? Const::MISS : std::atoi(found);
  }
  int value = 0;
  std::memcpy(&value, found, sizeof(value));
  return value;
}

bool Hash::searchBool(const char* text) const {
  const int value = searchInt(text);
  return value != Const::MISS && value != 0;
}

float Hash::searchFloat(const char* text) const {
  const char* found = search(text);
  if (found == nullptr) {
    return 0.0F;
  }
  return type == 3 ? static_cast<float>(*found) : StrLib::toFloat(found);
}

const char* Hash::first() {
  cur = 0;
  return next();
}

const char* Hash::next() {
  return cur < entries.size() ? entries[cur++].data.data() : nullptr;
}

const char* Hash::nextKey() {
  return cur < entries.size() ? entries[cur++].keys[0].c_str() : nullptr;
}

void Hash::print() const {
  for (const Entry& entry : entries) {
    std::printf("%s\n", entry.keys[0].c_str());
  }
}

void Hash::printData() const {
  for (const Entry& entry : entries) {
    for (int k = 0; k < numkey; k++) {
      std::printf("%s ", entry.keys[static_cast<size_t>(k)].c_str());
    }
    std::printf("%s\n", type == 0 && data_size == 0 ? entry.data.data() : "");
  }
}

void Hash::printHash() const {
  for (int k = 0; k < numkey; k++) {
    for (int chain = 0; chain < size; chain++) {
      for (const Node& node : table[static_cast<size_t>(k)][static_cast<size_t>(chain)]) {
        std::printf("%d %d %s\n", k, chain, node.key.c_str());
      }
    }
  }
}

}  // namespace ZQV
