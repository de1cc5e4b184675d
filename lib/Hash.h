#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace ZQV {

/** Table of entries with up to four keys each, found by any of them and walked in order of entry.
 * An entry holds an integer (type 1 or 2), a float (type 3), a block of data_size bytes, or a text.
 */
class Hash {
 public:
  static constexpr int MAX_KEYS = 4;

  Hash() { set(0, 0, 0, 1); }
  Hash(int kind, int table_size, int bytes, int keys) { set(kind, table_size, bytes, keys); }
  Hash(int kind, int table_size) { set(kind, table_size, 0, 1); }

  /** Empties and shapes the table. @param table_size  number of chains, at least 1 is used
   *  @param bytes  size of a data block, 0 for texts  @param keys  keys an entry, 1 to 4  @return 1
   */
  int set(int kind, int table_size, int bytes, int keys);
  int set(int table_size, int bytes, int keys) { return set(0, table_size, bytes, keys); }
  int set(int kind, int table_size) { return set(kind, table_size, 0, 1); }

  /** Enters data under as many keys as the table has. Where every key is known already, the data of
   * the first key's entry is replaced; else the entry is new, and a key that was known keeps
   * finding the older entry. @return 1; 0 if a key is absent */
  int enter(const char* key, const void* value);
  int enter(const char* key0, const char* key1, const void* value);
  int enter(const char* key0, const char* key1, const char* key2, const void* value);
  int enter(const char* key0, const char* key1, const char* key2, const char* key3,
            const void* value);
  int enterInt(const char* key, int value);
  int enterFloat(const char* key, float value);

  /** The data of an entry by its key in table 0 (k); absent if there is none. Holds until clear().
   */
  [[nodiscard]] const char* search(const char* key) const { return search(0, key); }
  [[nodiscard]] const char* search(int k, const char* key) const;
  /** The integer of types 1 and 2, else the number of the text; Const::MISS when absent. */
  [[nodiscard]] int searchInt(const char* key) const;
  /** The same as a truth; false when absent. */
  [[nodiscard]] bool searchBool(const char* key) const;
  /** For type 3 the first byte of the data as a number, deliberately; else the number of the text;
   * 0 when absent. */
  [[nodiscard]] float searchFloat(const char* key) const;

  /** Walk the data, or the first keys, in order of entry; absent at the end. */
  const char* first();
  const char* next();
  const char* nextKey();
  void clear();
  [[nodiscard]] int getNum() const { return static_cast<int>(entries.size()); }

  /** Chain of a text: h = (h * 257 + c) mod 35177 over signed characters, then mod size. */
  [[nodiscard]] int key(const char* text) const;

  /** The keys; keys and data; chains and keys. */
  void print() const;
  void printData() const;
  void printHash() const;

 private:
  struct Entry {
    std::array<std::string, MAX_KEYS> keys;
    std::vector<char> data;
  };
  struct Node {
    std::string key;
    size_t entry;
  };
  int enterKeys(const std::array<const char*, MAX_KEYS>& keys, int given, const void* value);
  void store(Entry& entry, const void* value) const;
  [[nodiscard]] const Node* find(int k, const char* text) const;

  int type = 0;
  int size = 1;
  int data_size = 0;
  int numkey = 1;
  std::array<std::vector<std::vector<Node>>, MAX_KEYS> table;
  std::vector<Entry> entries;
  size_t cur = 0;
};

}  // namespace ZQV
