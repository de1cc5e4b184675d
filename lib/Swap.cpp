#include "Swap.h"

#include <algorithm>
#include <bit>

#include "File.h"

namespace ZQV {

namespace {

template <int Width>
void reverse(void* data, int n) {
  auto* bytes = static_cast<unsigned char*>(data);
  for (int i = 0; i < n; i++, bytes += Width) {
    std::reverse(bytes, bytes + Width);
  }
}

}  // namespace

int Swap::init(int order) {
  constexpr bool machine_little = std::endian::native == std::endian::little;
  type = (order == DataStand && machine_little) || (order == DataLittle && !machine_little);
  return 1;
}

int Swap::swap2(void* data, int n) const {
  if (!type || data == nullptr) {
    return 0;
  }
  reverse<2>(data, n);
  return 1;
}

int Swap::swap4(void* data, int n) const {
  if (!type || data == nullptr) {
    return 0;
  }
  reverse<4>(data, n);
  return 1;
}

int Swap::swap8(void* data, int n) const {
  if (!type || data == nullptr) {
    return 0;
  }
  reverse<8>(data, n);
  return 1;
}

int Swap::readDouble(File& file, double& v) const {
  const int n = file.read(&v, sizeof(v), 1);
  if (n == 1) {
    swap8(&v);
  }
  return n;
}

int Swap::readFloat(File& file, float& v) const {
  const int n = file.read(&v, sizeof(v), 1);
  if (n == 1) {
    swap4(&v);
  }
  return n;
}

int Swap::readInt4(File& file, int& v) const {
  const int n = file.read(&v, sizeof(v), 1);
  if (n == 1) {
    swap4(&v);
  }
  return n;
}

int Swap::readUInt4(File& file, unsigned& v) const {
  const int n = file.read(&v, sizeof(v), 1);
  if (n == 1) {
    swap4(&v);
  }
  return n;
}

int Swap::readInt2(File& file, short& v) const {
  const int n = file.read(&v, sizeof(v), 1);
  if (n == 1) {
    swap2(&v);
  }
  return n;
}

int Swap::readUInt2(File& file, unsigned short& v) const {
  const int n = file.read(&v, sizeof(v), 1);
  if (n == 1) {
    swap2(&v);
  }
  return n;
}

int Swap::writeFloat(File& file, float v) const {
  swap4(&v);
  return file.write(&v, sizeof(v), 1);
}

int Swap::writeInt4(File& file, int v) const {
  swap4(&v);
  return file.write(&v, sizeof(v), 1);
}

int Swap::writeInt2(File& file, short v) const {
  swap2(&v);
  return file.write(&v, sizeof(v), 1);
}

}  // namespace ZQV
