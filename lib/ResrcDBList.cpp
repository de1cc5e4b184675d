#include "ResrcDBList.h"

namespace ZQV {

int ResrcDBList::add(const char* name, const char* env, const char* cmdln, const char* help) {
  items.push_back({name, env, cmdln, help});
  return 1;
}

const ResrcDBItem* ResrcDBList::next() {
  return cur < items.size() ? &items[cur++] : nullptr;
}

const ResrcDBItem* ResrcDBList::get(int i) const {
  return i < 0 || i >= getNum() ? nullptr : &items[static_cast<size_t>(i)];
}

}  // namespace ZQV
