#include "GifFile.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "Domain.h"
#include "DomainTool.h"
#include "Image.h"
#include "ImageMath.h"
#include "String.h"
#include "Strings.h"
#include "Tools.h"
#include "Zqv.h"

// Format: Graphics Interchange Format, version 89a (CompuServe, 1990), with its variable-length
// LZW.

namespace ZQV {

namespace {

constexpr int SEPARATOR = 0x2c;
constexpr int EXTENSION = 0x21;
constexpr int TRAILER = 0x3b;
constexpr int CONTROL = 0xf9;
constexpr int COMMENT = 0xfe;
constexpr int APPLICATION = 0xff;
constexpr int MAX_SIZE = 65535;
constexpr int MAX_INFO = 79;
constexpr int MAX_BLOCK = 255;
constexpr int MAX_CODE_BITS = 12;
constexpr int NUM_CODES = 1 << MAX_CODE_BITS;
constexpr int STACK_SIZE = 5000;
constexpr int PIXEL_BITS = 8;
/** Hundredths of a second in the control block of a single picture. */
constexpr int DELAY = 10;
/** Says that an animation begins anew at its end; with the terminating 0. */
constexpr char ENDLESS[] = "\x21\xff\x0bNETSCAPE2.0\x03\x01\x00\x00";

/** Passes of an interlaced picture. */
constexpr std::array<int, 4> PASS_START{0, 4, 2, 1};
constexpr std::array<int, 4> PASS_STEP{8, 8, 4, 2};

int get2(const unsigned char* p) {
  return p[0] | p[1] << 8;
}

void put2(std::string& out, int v) {
  out.push_back(static_cast<char>(v & 0xff));
  out.push_back(static_cast<char>(v >> 8 & 0xff));
}

/** -1 at the end of the file. */
int readByte(File& file) {
  unsigned char c = 0;
  return file.read(&c, 1) == 1 ? c : -1;
}

int tableSize(int flags) {
  return 1 << ((flags & 7) + 1);
}

/** Of a table with so many colours. */
size_t tableBytes(int n) {
  return 3 * static_cast<size_t>(n);
}

/** The order in which rows are stored. */
class RowOrder {
 public:
  RowOrder(int rows, bool interlaced) : height(rows), inter(interlaced) {}
  [[nodiscard]] bool valid() const { return row < height; }
  [[nodiscard]] int getRow() const { return row; }
  void next() {
    row += inter ? PASS_STEP[pass] : 1;
    while (inter && row >= height && pass + 1 < PASS_START.size()) row = PASS_START[++pass];
  }

 private:
  int height;
  bool inter;
  size_t pass = 0;
  int row = 0;
};

/** Puts a stream of pixels into the rows of an image; what lies off the image is dropped. */
class FrameRows {
 public:
  FrameRows(Image& to, int cols, int rows, bool interlaced)
      : image(to),
        width(cols),
        room(std::min(cols, to.getWidth())),
        order(interlaced ? rows : std::min(rows, to.getHeight()), interlaced) {
    row = image.findRow(0);
  }
  [[nodiscard]] bool isFull() const { return width < 1 || !order.valid(); }
  void put(const unsigned char* pixels, int n) {
    while (n > 0 && !isFull()) {
      const int part = std::min(n, width - x);
      if (row != nullptr && x < room) {
        std::memcpy(row + x, pixels, static_cast<size_t>(std::min(part, room - x)));
      }
      pixels += part;
      n -= part;
      x += part;
      if (x < width) continue;
      x = 0;
      order.next();
      row = image.findRow(order.getRow());
    }
  }

 private:
  Image& image;
  int width;
  int room;
  RowOrder order;
  int x = 0;
  unsigned char* row = nullptr;
};

/** The LZW decoder of one picture. Its table is left as it was by a clear code, and a code beyond
 * the entries in use counts as the next one, so that damaged data may lead prefixes in circles: the
 * bound of the stack ends that. */
class GifDecoder {
 public:
  GifDecoder(File& from, int bits) : file(from), code_size(bits) {
    clear();
    tab_pfix.fill(-1);
    for (size_t i = 0; i < tab_ext.size(); i++) tab_ext[i] = static_cast<unsigned char>(i);
  }
  /** @return 1 at the end of picture or data, 0 where a code has no room in the table */
  int read(FrameRows& rows);
  [[nodiscard]] int64_t getNumPixel() const { return num_pixel; }

 private:
  void clear() {
    coded_prev = -1;
    coded_size = code_size + 1;
    coded_mask = (1 << coded_size) - 1;
    tab_ind = (1 << code_size) + 2;
  }
  int readData();
  bool push(int code);

  File& file;
  std::array<unsigned char, MAX_BLOCK> data{};
  int data_size = 0;
  int data_ind = 0;
  int code_size;
  int coded_data = 0;
  int coded_prev = -1;
  int coded_mask = 0;
  int coded_size = 0;
  std::array<int16_t, NUM_CODES> tab_pfix{};
  std::array<unsigned char, NUM_CODES> tab_ext{};
  int tab_ind = 0;
  std::array<unsigned char, STACK_SIZE> pix_stack{};  ///< filled from its end
  int pix_ptr = STACK_SIZE;
  int data_bits = 0;
  uint32_t temp_data = 0;
  int64_t num_pixel = 0;
};

/** The next code. @return 0 at the end of the data */
int GifDecoder::readData() {
  while (data_bits < coded_size) {
    if (data_ind == data_size) {
      const int n = readByte(file);
      if (n < 1 || file.read(data.data(), static_cast<size_t>(n)) != n) return 0;
      data_size = n;
      data_ind = 0;
    }
    temp_data |= static_cast<uint32_t>(data[static_cast<size_t>(data_ind++)]) << data_bits;
    data_bits += 8;
  }
  coded_data = static_cast<int>(temp_data) & coded_mask;
  data_bits -= coded_size;
  temp_data >>= coded_size;
  return 1;
}

/** Puts the pixels of a code onto the stack. @return false if they don't fit */
bool GifDecoder::push(int code) {
  for (; code >= 0; code = tab_pfix[static_cast<size_t>(code)]) {
    if (pix_ptr < 1) return false;
    pix_stack[static_cast<size_t>(--pix_ptr)] = tab_ext[static_cast<size_t>(code)];
  }
  return true;
}

int GifDecoder::read(FrameRows& rows) {
  const int clear_code = 1 << code_size;
  const int end_info_code = clear_code + 1;
  while (!rows.isFull() && readData() != 0) {
    if (coded_data == end_info_code) break;
    if (coded_data == clear_code) {
      clear();
      continue;
    }
    pix_ptr = STACK_SIZE;
    if (coded_prev < 0) {
      if (!push(coded_data)) break;
    } else {
      const bool is_next = coded_data >= tab_ind;  // the previous string and its own first pixel
      if (is_next) pix_ptr--;
      if (!push(is_next ? coded_prev : coded_data)) break;
      const unsigned char first = pix_stack[static_cast<size_t>(pix_ptr)];
      if (is_next) pix_stack.back() = first;
      if (tab_ind >= NUM_CODES) return 0;
      tab_pfix[static_cast<size_t>(tab_ind)] = static_cast<int16_t>(coded_prev);
      tab_ext[static_cast<size_t>(tab_ind)] = first;
      if (tab_ind == coded_mask && coded_size < MAX_CODE_BITS) {
        coded_size++;
        coded_mask = (1 << coded_size) - 1;
      }
      tab_ind++;
    }
    coded_prev = coded_data;
    rows.put(&pix_stack[static_cast<size_t>(pix_ptr)], STACK_SIZE - pix_ptr);
    num_pixel += STACK_SIZE - pix_ptr;
  }
  return 1;
}

/** The LZW encoder of one picture. Strings are found in a table of 8192 places, at most half of
 * which are in use, with linear probing. */
class GifEncoder {
 public:
  GifEncoder(File& to, int bits) : file(to), code_size(bits) {
    clearTable();
    outCode(1 << code_size);
  }
  void write(const unsigned char* pixels, int n);
  /** Ends data and picture. */
  void finish();

 private:
  static constexpr int HASH_BITS = 13;
  static constexpr uint32_t FREE = 0xffffffff;  ///< no string has this key and value

  void clearTable() {
    htable.fill(FREE);
    coded_size = code_size + 1;
    coded_mask = (2 << code_size) - 1;
    hnodes = (1 << code_size) + 2;
  }
  void outCode(int code);

  File& file;
  std::array<unsigned char, MAX_BLOCK + 1> data{};  ///< length and bytes of a sub-block
  int code_size;
  int coded_mask = 0;
  int coded_size = 0;
  std::array<uint32_t, 1 << HASH_BITS> htable{};  ///< prefix, byte and code of a string
  int hnodes = 0;                                 ///< next free code
  int cur_data = -1;                              ///< code of the string at hand, -1 ahead of all
  int data_bits = 0;
  uint32_t temp_data = 0;
  int out_bytes = 1;
};

void GifEncoder::outCode(int code) {
  temp_data |= static_cast<uint32_t>(code) << data_bits;
  data_bits += coded_size;
  while (data_bits > 7) {
    data[static_cast<size_t>(out_bytes++)] = static_cast<unsigned char>(temp_data & 0xff);
    if (out_bytes == MAX_BLOCK) {
      data[0] = MAX_BLOCK - 1;
      file.write(data.data(), MAX_BLOCK);
      out_bytes = 1;
    }
    data_bits -= 8;
    temp_data >>= 8;
  }
  if (hnodes > coded_mask && coded_size < MAX_CODE_BITS) {
    coded_size++;
    coded_mask = (1 << coded_size) - 1;
  }
}

void GifEncoder::write(const unsigned char* pixels, int n) {
  const unsigned char* const end = pixels + n;
  if (cur_data < 0 && n > 0) cur_data = *pixels++;
  for (; pixels < end; pixels++) {
    const uint32_t key = static_cast<uint32_t>(cur_data) | static_cast<uint32_t>(*pixels) << 12;
    // Fibonacci hashing: the upper bits of a product with 2^32 over the golden ratio.
    size_t place = key * 2654435769U >> (32 - HASH_BITS);
    while (htable[place] != FREE && htable[place] >> MAX_CODE_BITS != key) {
      place = (place + 1) % htable.size();
    }
    if (htable[place] != FREE) {
      cur_data = static_cast<int>(htable[place] % NUM_CODES);
      continue;
    }
    outCode(cur_data);
    if (hnodes < NUM_CODES) {
      htable[place] = key << MAX_CODE_BITS | static_cast<uint32_t>(hnodes++);
    } else {
      outCode(1 << code_size);
      clearTable();
    }
    cur_data = *pixels;
  }
}

void GifEncoder::finish() {
  if (cur_data >= 0) outCode(cur_data);
  outCode((1 << code_size) + 1);
  // Where a sub-block has just been filled, the last bits of the end code aren't worth another one:
  // all pixels are there, deliberate.
  if (out_bytes >= 2) {
    if (data_bits != 0)
      data[static_cast<size_t>(out_bytes++)] = static_cast<unsigned char>(temp_data);
    data[0] = static_cast<unsigned char>(out_bytes - 1);
    file.write(data.data(), static_cast<size_t>(out_bytes));
  }
  file.write("", 1);
}

/** Bits of a table that holds n colours. */
int tableBits(int n) {
  int bits = 1;
  while (1 << bits < n) bits++;
  return bits;
}

char colorByte(float v) {
  return static_cast<char>(std::clamp(Tools::cut(static_cast<double>(v * 255.0F)), 0, 255));
}

}  // namespace

void GifFile::init() {
  close();
  use_inter = 0;
  trans = -1;
  loop_delay = loop_end_delay = 0;
}

int GifFile::open(const char* name, int how) {
  close();
  access = how;
  begun = false;
  file_num = 0;
  opened = (how == 0 || how == 1) && file.open(name, how == 0 ? "r" : "w") != 0;
  return opened ? 1 : 0;
}

int GifFile::close() {
  if (!opened) return 0;
  if (begun) file.write(";", 1);
  begun = false;
  file_num = 0;
  opened = false;
  return file.close();
}

// Reading.

int GifFile::read(Image& image) {
  image.init();
  if (!opened || access != 0 || readHeader(image) == 0) return 0;
  int block = 0;
  while ((block = readByte(file)) >= 0 && block != SEPARATOR) {
    if (block == EXTENSION) readExtension(image);
  }
  return block == SEPARATOR ? readPicture(image) : 1;
}

int GifFile::readHeader(Image& image) {
  char sig[7] = {};
  if (file.read(sig, 6) != 6 || std::memcmp(sig, "GIF", 3) != 0) {
    Zqv::outWarning("GIF_read: Not a GIF file\n");
    return 0;
  }
  unsigned char desc[7];
  if (file.read(desc, sizeof(desc)) != sizeof(desc)) return 0;
  const int flags = desc[4];
  width = get2(desc);
  height = get2(desc + 2);
  depth = (flags >> 4 & 7) + 1;
  glob_color_exist = flags >> 7;
  glob_color_size = tableSize(flags);
  image.set(width, height, PIXEL_BITS);
  image.setColorType(Image::INDEXED);
  image.setInfo("GIF");
  image.allocColors(glob_color_size);
  Zqv::outDebug(3, "type: %s\n", sig);
  Zqv::outDebug(3, "width: %d\n", width);
  Zqv::outDebug(3, "height: %d\n", height);
  Zqv::outDebug(3, "depth: %d\n", depth);
  Zqv::outDebug(3, "bytes_per_line: %d\n", image.getBytesLine());
  Zqv::outDebug(2, "color table size: %d\n", glob_color_size);
  if (image.allocData() == 0) return 0;
  if (glob_color_exist == 0) return 1;
  std::array<unsigned char, 3 * 256> table{};
  file.read(table.data(), tableBytes(glob_color_size));
  for (int i = 0; i < glob_color_size; i++) {
    const unsigned char* rgb = &table[tableBytes(i)];
    const auto channel = [](unsigned char c) { return static_cast<float>(c) / 255.0F; };
    image.setColor(i, channel(rgb[0]), channel(rgb[1]), channel(rgb[2]));
  }
  return 1;
}

int GifFile::readExtension(Image& image) {
  switch (readByte(file)) {
    case CONTROL: {
      static constexpr const char* disposals[] = {
          "No disposal specified\n", "Do not dispose. graphic left in tact\n",
          "Restore to background color\n", "Restore to previous image\n"};
      unsigned char block[6];
      if (file.read(block, sizeof(block)) != sizeof(block)) return 0;
      const int flags = block[1];
      const int delay = get2(block + 2);
      if ((flags >> 2 & 7) < 4) Zqv::outDebug(3, "%s", disposals[flags >> 2 & 7]);
      Zqv::outDebug(3, "User input %s\n", (flags & 2) != 0 ? "expected" : "not expected");
      Zqv::outDebug(3, "Transparent index %s\n", (flags & 1) != 0 ? "given" : "not given");
      Zqv::outDebug(3, "Delay time: %d %.2f\n", delay, delay / 100.0);
      Zqv::outDebug(3, "Transparent color index: %d\n", block[4]);
      image.setTransColor(block[4]);
      return 1;
    }
    case APPLICATION: {
      char block[12] = {};
      if (file.read(block, sizeof(block)) != sizeof(block)) return 0;
      Zqv::outDebug(3, "Application identifier: %8.8s\n", block + 1);
      Zqv::outDebug(3, "Application authentication: %3.3s\n", block + 9);
      unsigned char part[MAX_BLOCK];
      int n = 0;
      while ((n = readByte(file)) > 0) {
        if (file.read(part, static_cast<size_t>(n)) != n) return 0;
      }
      return 1;
    }
    case COMMENT: return readComment(image);
    default: return 0;
  }
}

/** The first sub-block of a comment. */
int GifFile::readComment(Image& image) {
  char part[MAX_BLOCK + 2] = {};
  const int n = readByte(file);
  if (n < 0) return 0;
  file.read(part, static_cast<size_t>(n) + 1);  // with the terminator behind it
  part[n] = '\0';
  std::string text = part;
  while (!text.empty()) {
    const bool is_domain = text.compare(0, 3, "pd=") == 0 || text.compare(0, 5, "proj=") == 0;
    if (is_domain) {  // a domain has commas of its own
      Domain domain;
      if (DomainTool::decodeStored(domain, text.c_str() + text.find('=') + 1) != 0) {
        image.bindDomain(domain);
      }
      break;
    }
    const size_t comma = text.find(',');
    if (text.compare(0, 3, "ti=") == 0) image.setInfo(text.substr(0, comma).c_str() + 3);
    text.erase(0, comma == std::string::npos ? comma : comma + 1);
  }
  return 1;
}

int GifFile::readPicture(Image& image) {
  unsigned char desc[9];
  if (file.read(desc, sizeof(desc)) != sizeof(desc)) return 1;
  const int flags = desc[8];
  width = get2(desc + 4);
  height = get2(desc + 6);
  Zqv::outDebug(3, "X: %3d Y: %3d W: %3d H: %3d\n", get2(desc), get2(desc + 2), width, height);
  local_color_exist = flags >> 7;
  local_color_size = tableSize(flags);
  if (local_color_exist != 0) {
    unsigned char table[3 * 256];
    file.read(table, tableBytes(local_color_size));
  }
  code_size = readByte(file);
  if (code_size < 1 || code_size > PIXEL_BITS) return 1;
  FrameRows rows(image, width, height, (flags & 0x40) != 0);
  GifDecoder decoder(file, code_size);
  const int result = decoder.read(rows);
  num_pixel = Tools::cut(static_cast<double>(decoder.getNumPixel()));
  return result;
}

// Writing.

/** The picture with indexed colours, and the bits that its pixels need.
 *  @param copy  holds it, where the image has colours of another kind
 *  @return absent if it can't be written */
const Image* GifFile::indexed(const Image& image, Image& copy, int& bits) {
  if (!opened || access != 1 || !image.validData()) return nullptr;
  const bool is_indexed = image.getColorType() == Image::INDEXED;
  if (!is_indexed && ImageMath::toIndex(image, PIXEL_BITS, copy) == 0) return nullptr;
  const Image& source = is_indexed ? image : copy;
  width = source.getWidth();
  height = source.getHeight();
  depth = source.getDepth();
  Zqv::outDebug(3, "width: %d\n", width);
  Zqv::outDebug(3, "height: %d\n", height);
  Zqv::outDebug(3, "depth: %d\n", depth);
  Zqv::outDebug(3, "bytes_per_line: %d\n", source.getBytesLine());
  Zqv::outDebug(3, "trans_color: %d\n", source.getTransColor());
  if (width < 1 || width > MAX_SIZE || height < 1 || height > MAX_SIZE) return nullptr;

  // A pixel past the table would be no valid code: the table grows to hold all.
  int num = source.hasColors() ? source.getNumColors() : 0;
  std::vector<unsigned char> buffer;
  for (int y = 0; y < height; y++) {
    const unsigned char* row = source.getBytes(y, buffer);
    num = std::max(num, *std::max_element(row, row + width) + 1);
  }
  bits = std::min(tableBits(num), PIXEL_BITS);
  code_size = std::max(bits, 2);
  Zqv::outDebug(4, "num_color: %d\n", source.getNumColors());
  Zqv::outDebug(4, "num_color+: %d\n", 1 << bits);
  Zqv::outDebug(4, "code_size: %d\n", code_size);
  return &source;
}

int GifFile::write(const Image& image) {
  Image copy;
  int bits = 0;
  const Image* source = indexed(image, copy, bits);
  if (source == nullptr) return 0;
  writeHead(*source, bits);
  writeComments(*source);
  if (trans >= 0 || source->hasTransColor()) writeControl(*source, DELAY);
  writePicture(*source, bits, false);
  file.write(";", 1);
  return file.flush();
}

int GifFile::writeFrame(const Image& image, bool last) {
  Image copy;
  int bits = 0;
  const bool first = !begun;
  const int w = width;
  const int h = height;
  const Image* source = indexed(image, copy, bits);
  if (source == nullptr || (!first && (width != w || height != h))) return 0;
  if (first) {
    begun = true;
    writeHead(*source, bits);
    file.write(ENDLESS, sizeof(ENDLESS));
    writeComments(*source);
  }
  file_num++;
  writeControl(*source, last ? loop_end_delay : loop_delay);
  return writePicture(*source, bits, !first);
}

namespace {

/** The table of colours, of 2 to the power bits. */
void putColors(std::string& out, const Image& image, int bits) {
  for (int i = 0; i < 1 << bits; i++) {
    out.push_back(colorByte(image.getRed(i)));
    out.push_back(colorByte(image.getGrn(i)));
    out.push_back(colorByte(image.getBlu(i)));
  }
}

}  // namespace

int GifFile::writeHead(const Image& image, int bits) {
  std::string head = "GIF89a";
  put2(head, width);
  put2(head, height);
  head.push_back(static_cast<char>(0x80 | (bits - 1) << 4 | (bits - 1)));
  head.append(2, '\0');  // background, aspect
  putColors(head, image, bits);
  return file.write(head.data(), head.size());
}

int GifFile::writeComments(const Image& image) {
  writeComment("ti=", std::string(image.getInfo()).substr(0, MAX_INFO).c_str());
  if (image.getDomain().isSet()) {
    String text;
    image.getDomain().toString(text);
    writeComment("pd=", text.get());
  }
  return 1;
}

/** What is transparent, and how long the picture is shown, in hundredths of a second. */
int GifFile::writeControl(const Image& image, int delay) {
  const int index = image.hasTransColor() ? image.getTransColor() : trans;
  std::string block{EXTENSION, static_cast<char>(CONTROL), 4,
                    static_cast<char>(index >= 0 ? 1 : 0)};
  put2(block, delay);
  block += {static_cast<char>(std::max(index, 0)), 0};
  return file.write(block.data(), block.size());
}

/** A comment of one sub-block. @return 0 if it doesn't fit, with nothing written */
int GifFile::writeComment(const char* key, const char* text) {
  const std::string item = std::string(key) + text;
  if (item.size() > MAX_BLOCK) return 0;
  std::string block{EXTENSION, static_cast<char>(COMMENT), static_cast<char>(item.size())};
  block += item;
  return file.write(block.c_str(), block.size() + 1) > 0 ? 1 : 0;  // with a terminating 0
}

int GifFile::writePicture(const Image& image, int bits, bool own_colors) {
  std::string desc(1, SEPARATOR);
  desc.append(4, '\0');  // left, top
  put2(desc, width);
  put2(desc, height);
  desc.push_back(
      static_cast<char>((use_inter != 0 ? 0x40 : 0) | (own_colors ? 0x80 | (bits - 1) : 0)));
  if (own_colors) putColors(desc, image, bits);
  desc.push_back(static_cast<char>(std::max(bits, 2)));
  file.write(desc.data(), desc.size());
  std::vector<unsigned char> buffer;
  GifEncoder encoder(file, code_size);
  for (RowOrder order(height, use_inter != 0); order.valid(); order.next()) {
    encoder.write(image.getBytes(order.getRow(), buffer), width);
  }
  encoder.finish();
  return file.flush();
}

// Animations.

int GifFile::write(const char* name, bool last) {
  if (!opened || access != 1 || file_num < 0) return 0;
  File from;
  if (from.open(name, "r") == 0) {
    Zqv::outWarning("Unable to open GIF file: %s\n", name != nullptr ? name : "");
    return 0;
  }
  Zqv::outMessage(6, "Processing: %s\n", name);
  const int first_delay = loop_delay;
  if (last) loop_delay = loop_end_delay;
  const int result = copyFrames(from);
  loop_delay = first_delay;
  if (last && file_num != 0) file_num = -1;
  return result;
}

/** Copies all pictures of a file, each behind a control block of ours. The first file gives the
 * screen and the global colours, the tables of others become local ones. */
int GifFile::copyFrames(File& from) {
  char head[13];
  if (from.read(head, sizeof(head)) != sizeof(head) || std::memcmp(head, "GIF", 3) != 0) {
    Zqv::outWarning("Not a GIF file\n");
    return 0;
  }
  const int flags = static_cast<unsigned char>(head[10]);
  std::string table;
  if ((flags & 0x80) != 0) {
    table.resize(tableBytes(tableSize(flags)));
    from.read(table.data(), table.size());
  }
  if (!begun) {
    begun = true;
    head[4] = '9';
    file.write(head, sizeof(head));
    file.write(table.data(), table.size());
    file.write(ENDLESS, sizeof(ENDLESS));
    table.clear();
  }
  char control[6] = {4, 0, 0, 0, 0, 0};
  int block = 0;
  while ((block = readByte(from)) >= 0 && block != TRAILER) {
    if (block == EXTENSION) {
      if (readByte(from) != CONTROL) {
        unsigned char part[MAX_BLOCK];
        int n = 0;
        while ((n = readByte(from)) > 0 && from.read(part, static_cast<size_t>(n)) == n) {
        }
      } else if (from.read(control, sizeof(control)) != sizeof(control)) {
        break;
      }
    } else if (block == SEPARATOR) {
      unsigned char desc[9];
      if (from.read(desc, sizeof(desc)) != sizeof(desc)) break;
      std::string out{EXTENSION, static_cast<char>(CONTROL), 4, control[1]};
      put2(out, loop_delay);
      out += {control[4], 0, SEPARATOR};
      const bool has_local = (desc[8] & 0x80) != 0;
      if (!has_local && !table.empty()) {
        desc[8] = static_cast<unsigned char>((desc[8] & 0x40) | 0x80 | (flags & 7));
      }
      out.append(reinterpret_cast<const char*>(desc), sizeof(desc));
      if (!has_local) {
        out += table;
      } else {
        std::string local(tableBytes(tableSize(desc[8])), '\0');
        from.read(local.data(), local.size());
        out += local;
      }
      const int bits = readByte(from);
      if (bits < 0) break;
      out.push_back(static_cast<char>(bits));
      file.write(out.data(), out.size());
      copyBlocks(from);
      file_num++;
      control[1] = control[4] = 0;
    }
  }
  return file.flush();
}

/** Copies sub-blocks up to the end of the picture; those that are cut short are left out. */
int GifFile::copyBlocks(File& from) {
  unsigned char part[MAX_BLOCK + 1] = {};
  int n = 0;
  while ((n = readByte(from)) > 0 && from.read(part + 1, static_cast<size_t>(n)) == n) {
    part[0] = static_cast<unsigned char>(n);
    file.write(part, static_cast<size_t>(n) + 1);
  }
  return file.write("", 1);
}

}  // namespace ZQV
