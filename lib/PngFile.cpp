#include "PngFile.h"

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstdint>
#include <new>
#include <string_view>
#include <vector>

#include <png.h>

#include "Date.h"
#include "DateTool.h"
#include "Domain.h"
#include "DomainTool.h"
#include "Image.h"
#include "ImageMath.h"
#include "StrLib.h"
#include "String.h"
#include "Strings.h"
#include "Tools.h"
#include "Zqv.h"

// libpng reports errors by a jump. It goes past no object with a destructor: what is between setjmp
// and the calls of libpng holds plain values, and the callers own the rest.

namespace ZQV {

namespace {

constexpr int MAX_TITLE = 39;
constexpr int MAX_COMMENT = 999;
constexpr int MAX_DATE = 49;
constexpr int MAX_INFO = 79;
constexpr int MAX_DOMAIN = 149;
constexpr int MAX_COLORS = 256;
constexpr int SIGNATURE = 8;
/** Level of zlib, with rows as they are (filter 0). Of a radar picture of 512 by 725 pixels, in ms
 *  and bytes: indexed 1.3 and 32400 at level 1, 2.0 and 26000 at level 4, 5.4 and 23400 at level 6;
 *  true colour 2.2 and 53700, 3.8 and 39300, 7.4 and 31100, but 11.3 and 41600 with what libpng
 * does by itself, level 6 and the filters that it guesses. */
constexpr int COMPRESS_LEVEL = 4;
/** What libpng may take for the text chunks of a file, of which one may unpack to much text, and
 * for anything at once: it clears room for what a chunk states as its length. A row takes at most 8
 * MB. */
constexpr int MAX_TEXTS = 128;
constexpr int MAX_TEXT_SIZE = 1 << 20;
constexpr size_t MAX_MEMORY = 9 << 20;

std::string cutText(const char* text, int max) {
  return std::string(
      std::string_view(text != nullptr ? text : "").substr(0, static_cast<size_t>(max)));
}

// What libpng calls back.

void onError(png_structp png, png_const_charp text) {
  Zqv::outDebug(2, "PNG error: %s\n", text);
  png_longjmp(png, 1);
}

void onWarning(png_structp /*png*/, png_const_charp text) {
  Zqv::outDebug(2, "PNG warning: %s\n", text);
}

void readBytes(png_structp png, png_bytep data, size_t n) {
  if (static_cast<File*>(png_get_io_ptr(png))->read(data, n) != static_cast<int>(n)) {
    png_error(png, "End of file");
  }
}

void writeBytes(png_structp png, png_bytep data, size_t n) {
  if (static_cast<File*>(png_get_io_ptr(png))->write(data, n) != static_cast<int>(n)) {
    png_error(png, "Write error");
  }
}

void flushBytes(png_structp png) {
  static_cast<File*>(png_get_io_ptr(png))->flush();
}

png_voidp allocate(png_structp /*png*/, png_alloc_size_t n) {
  return n <= MAX_MEMORY ? ::operator new(n, std::nothrow) : nullptr;
}

void release(png_structp /*png*/, png_voidp memory) {
  ::operator delete(memory);
}

struct ReadStructs {
  explicit ReadStructs(File& file)
      : png(png_create_read_struct_2(PNG_LIBPNG_VER_STRING, nullptr, onError, onWarning, nullptr,
                                     allocate, release)),
        info(png != nullptr ? png_create_info_struct(png) : nullptr) {
    if (png != nullptr) png_set_read_fn(png, &file, readBytes);
  }
  ReadStructs(const ReadStructs&) = delete;
  ReadStructs& operator=(const ReadStructs&) = delete;
  ~ReadStructs() { png_destroy_read_struct(&png, &info, nullptr); }

  png_structp png;
  png_infop info;
};

struct WriteStructs {
  explicit WriteStructs(File& file)
      : png(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, onError, onWarning)),
        info(png != nullptr ? png_create_info_struct(png) : nullptr) {
    if (png != nullptr) png_set_write_fn(png, &file, writeBytes, flushBytes);
  }
  WriteStructs(const WriteStructs&) = delete;
  WriteStructs& operator=(const WriteStructs&) = delete;
  ~WriteStructs() { png_destroy_write_struct(&png, &info); }

  png_structp png;
  png_infop info;
};

// Reading.

bool readInfo(png_structp png, png_infop info) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  png_set_sig_bytes(png, SIGNATURE);
  png_set_chunk_cache_max(png, MAX_TEXTS);
  png_set_chunk_malloc_max(png, MAX_TEXT_SIZE);
  png_read_info(png, info);
  return true;
}

/** Reads all rows into a store with so many bytes a row; with 0 all go to the same place. */
bool readRows(png_structp png, png_infop info, unsigned char* store, size_t bytes_line) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  const int passes = png_set_interlace_handling(png);
  const png_uint_32 height = png_get_image_height(png, info);
  for (int pass = 0; pass < passes; pass++) {
    for (png_uint_32 y = 0; y < height; y++) png_read_row(png, store + y * bytes_line, nullptr);
  }
  png_read_end(png, nullptr);
  return true;
}

void setDate(Image& image, const char* text) {
  Date date;
  DateTool::decode(text, date);
  image.setDatim(text);
  image.setDate(date);
}

void setDomain(Image& image, const char* text) {
  Domain domain;
  if (DomainTool::decodeStored(domain, text) != 0) image.bindDomain(domain);
}

void setComment(Image& image, const char* text) {
  const Strings lines(text, '\n');
  for (int i = 0; i < lines.getNum(); i++) {
    if (lines.equal(i, "ti=", 3)) image.setInfo(lines.getString(i) + 3);
    if (lines.equal(i, "dt=", 3)) setDate(image, lines.getString(i) + 3);
    if (lines.equal(i, "pd=", 3)) setDomain(image, lines.getString(i) + 3);
    if (lines.equal(i, "proj=", 5)) setDomain(image, lines.getString(i) + 5);
  }
}

void setTexts(png_structp png, png_infop info, Image& image) {
  png_textp texts = nullptr;
  const int num = png_get_text(png, info, &texts, nullptr);
  for (int i = 0; i < num; i++) {
    const std::string_view key = texts[i].key;
    const char* text = texts[i].text;
    if (key == "Comment") setComment(image, text);
    if (key == "Plot Domain") setDomain(image, text);
    if (key == "Information") image.setInfo(text);
    if (key == "Date/Time") setDate(image, text);
  }
}

void setPalette(png_structp png, png_infop info, Image& image) {
  png_colorp palette = nullptr;
  int num = 0;
  png_get_PLTE(png, info, &palette, &num);
  image.setColorType(Image::INDEXED);
  image.setMask(0, 0, 0);
  image.allocColors(num);
  const auto channel = [](png_byte c) { return static_cast<float>(c) / 255.0F; };
  for (int i = 0; i < num; i++) {
    image.setColor(i, channel(palette[i].red), channel(palette[i].green), channel(palette[i].blue));
  }
  // Only entry 0 is ever transparent, whichever the file names: deliberate.
  if (png_get_valid(png, info, PNG_INFO_tRNS) != 0) {
    image.setTransColor(0);
    image.setColor(0, -1.0F, -1.0F, -1.0F);
  }
}

// Writing.

/** All of a picture but its rows, ready for libpng. */
struct PngPicture {
  png_uint_32 width;
  png_uint_32 height;
  int depth;
  int color;
  int num_palette;
  png_color palette[MAX_COLORS];
  int num_alpha;
  png_byte alpha[MAX_COLORS];
  bool has_trans;
  png_color_16 trans;
  int num_text;
  png_text text[8];
};

void addText(PngPicture& picture, const char* key, const std::string& text) {
  png_text& entry = picture.text[picture.num_text++];
  entry = png_text{};
  entry.compression = PNG_TEXT_COMPRESSION_NONE;
  entry.key = const_cast<char*>(key);  // libpng only reads both
  entry.text = const_cast<char*>(text.c_str());
  entry.text_length = text.size();
}

png_byte colorByte(float v) {
  return static_cast<png_byte>(std::clamp(Tools::cut(static_cast<double>(v * 255.0F)), 0, 255));
}

void setGray(png_color& entry, int level) {
  entry.red = entry.green = entry.blue = static_cast<png_byte>(level);
}

void setIndexed(const Image& image, PngPicture& picture) {
  picture.color = PNG_COLOR_TYPE_PALETTE;
  picture.depth = image.getDepth();
  picture.num_palette = picture.depth >= 1 && picture.depth <= 8 ? 1 << picture.depth : MAX_COLORS;
  const int num_colors = image.hasColors() ? image.getNumColors() : 0;
  const int num = std::min(num_colors, picture.num_palette);
  bool is_trans = false;
  for (int i = 0; i < picture.num_palette; i++) {
    picture.alpha[i] = 255;
    if (num_colors == 0) setGray(picture.palette[i], i);
    if (i < num) {
      picture.palette[i] = {colorByte(image.getRed(i)), colorByte(image.getGrn(i)),
                            colorByte(image.getBlu(i))};
    }
    if (image.getTransColor() == i || (i < num && image.getRed(i) == -1.0F)) {
      picture.alpha[i] = 0;
      is_trans = true;
    }
  }
  picture.num_alpha = is_trans ? picture.num_palette : 0;
}

/** A table of gray levels. It loses the transparent code, while the pixels stay: those above show
 * the next level, deliberate. */
void setData(const Image& image, PngPicture& picture) {
  picture.color = PNG_COLOR_TYPE_PALETTE;
  picture.depth = image.getDepth();
  const int num = picture.depth >= 1 && picture.depth <= 8 ? 1 << picture.depth : MAX_COLORS;
  for (int i = 0; i < num; i++) {
    if (image.getTransColor() == i) {
      picture.num_alpha = 1;
    } else {
      setGray(picture.palette[picture.num_palette++], i);
    }
  }
}

void setTrueColor(const Image& image, PngPicture& picture) {
  picture.color = PNG_COLOR_TYPE_RGB;
  picture.depth = 8;
  picture.has_trans = image.hasTransColor();
  const int raw = image.getTransColor();
  picture.trans.red = static_cast<png_uint_16>(raw >> 16 & 0xff);
  picture.trans.green = static_cast<png_uint_16>(raw >> 8 & 0xff);
  picture.trans.blue = static_cast<png_uint_16>(raw & 0xff);
}

size_t rowBytes(const PngPicture& picture) {
  if (picture.color == PNG_COLOR_TYPE_RGB) return size_t{3} * picture.width;
  return (static_cast<size_t>(picture.width) * static_cast<size_t>(picture.depth) + 7) / 8;
}

/** Red, green and blue of each pixel of a row. */
void fillColors(const Image& image, int y, const unsigned char* row, png_bytep out) {
  const int width = image.getWidth();
  const int step = image.getBitsPixel() / 8;
  const bool is_plain = image.getDepth() != 8 && image.getDepth() != 16 &&
                        (step == 3 || step == 4) && row != nullptr &&
                        image.getBytesLine() >= int64_t{width} * step;
  if (!is_plain) {
    for (int x = 0; x < width; x++, out += 3) {
      const int v = image.getPixel(x, y);
      out[0] = static_cast<png_byte>(v >> 16 & 0xff);
      out[1] = static_cast<png_byte>(v >> 8 & 0xff);
      out[2] = static_cast<png_byte>(v & 0xff);
    }
    return;
  }
  const bool msb = image.getByteOrder() != 0;
  const int red = msb ? step - 3 : 2;
  const int blue = msb ? step - 1 : 0;
  const unsigned char* p = row;
  for (int x = 0; x < width; x++, p += step, out += 3) {
    out[0] = p[red];
    out[1] = p[msb ? red + 1 : 1];
    out[2] = p[blue];
  }
}

/** One row as libpng takes it: in place, or made in the buffer. */
png_const_bytep makeRow(const Image& image, int y, bool colors, size_t size, png_bytep buffer) {
  const unsigned char* row = image.findRow(y);
  if (colors) {
    if (row != nullptr && image.getBitsPixel() == 24 && image.getDepth() == 24 &&
        image.getByteOrder() != 0 && static_cast<size_t>(image.getBytesLine()) >= size) {
      return row;
    }
    fillColors(image, y, row, buffer);
    return buffer;
  }
  if (row != nullptr && static_cast<size_t>(image.getBytesLine()) >= size) return row;
  if (row != nullptr) std::copy(row, row + image.getBytesLine(), buffer);
  return buffer;
}

/** @param buffer  a cleared row */
bool writeAll(png_structp png, png_infop info, const PngPicture& picture, const Image& image,
              png_bytep buffer, size_t size) {
  if (setjmp(png_jmpbuf(png)) != 0) return false;
  png_set_IHDR(png, info, picture.width, picture.height, picture.depth, picture.color,
               PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  if (picture.num_alpha > 0) png_set_tRNS(png, info, picture.alpha, picture.num_alpha, nullptr);
  if (picture.has_trans) png_set_tRNS(png, info, nullptr, 1, &picture.trans);
  if (picture.num_palette > 0) png_set_PLTE(png, info, picture.palette, picture.num_palette);
  png_set_text(png, info, picture.text, picture.num_text);
  png_set_check_for_invalid_index(png, 0);
  png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
  png_set_compression_level(png, COMPRESS_LEVEL);
  png_write_info(png, info);
  const bool colors = picture.color == PNG_COLOR_TYPE_RGB;
  for (png_uint_32 y = 0; y < picture.height; y++) {
    png_write_row(png, makeRow(image, static_cast<int>(y), colors, size, buffer));
  }
  png_write_end(png, info);
  return true;
}

}  // namespace

void PngFile::init() {
  close();
  index = use_inter = 0;
  title = "ZQV Graphic";
  comment.clear();
}

int PngFile::open(const char* name, int how) {
  close();
  access = how;
  opened = (how == 0 || how == 1) && file.open(name, how == 0 ? "r" : "w") != 0;
  return opened ? 1 : 0;
}

int PngFile::close() {
  if (!opened) return 0;
  opened = false;
  return file.close();
}

void PngFile::setTitle(const char* text) {
  title = cutText(text, MAX_TITLE);
}

void PngFile::setComment(const char* text) {
  comment = cutText(text, MAX_COMMENT);
}

int PngFile::read(const char* name, Image& image) {
  return open(name, 0) != 0 ? read(image) : 0;
}

int PngFile::read(Image& image) {
  if (!opened || access != 0) return 0;
  image.init();
  unsigned char start[SIGNATURE] = {};
  if (file.read(start, SIGNATURE) != SIGNATURE || png_sig_cmp(start, 0, SIGNATURE) != 0) {
    Zqv::outWarning("Not a PNG file\n");
    close();
    return 0;
  }
  const ReadStructs s(file);
  if (s.info == nullptr || !readInfo(s.png, s.info)) {
    close();
    return 0;
  }
  png_uint_32 cols = 0;
  png_uint_32 rows = 0;
  int color = 0;
  int inter = 0;
  int compression = 0;
  int filter = 0;
  png_get_IHDR(s.png, s.info, &cols, &rows, &depth, &color, &inter, &compression, &filter);
  Zqv::outDebug(2, "Width: %u\n", cols);
  Zqv::outDebug(2, "Height: %u\n", rows);
  Zqv::outDebug(2, "Depth: %d\n", depth);
  Zqv::outDebug(2, "Color Type: %d\n", color);
  Zqv::outDebug(2, "Interlace: %d\n", inter);
  Zqv::outDebug(2, "Compression: %d\n", compression);
  Zqv::outDebug(2, "Filter: %d\n", filter);
  png_bytep trans = nullptr;
  int num_trans = 0;
  png_color_16p trans_values = nullptr;
  const auto has_trans = png_get_tRNS(s.png, s.info, &trans, &num_trans, &trans_values);
  Zqv::outDebug(3, "TRANS: %d %p %d %p\n", static_cast<int>(has_trans), static_cast<void*>(trans),
                num_trans, static_cast<void*>(trans_values));
  width = static_cast<int>(cols);
  height = static_cast<int>(rows);
  image.setInfo("PNG");
  setTexts(s.png, s.info, image);

  size_t row_bytes = png_get_rowbytes(s.png, s.info);
  const bool is_palette = color == PNG_COLOR_TYPE_PALETTE;
  bool is_stored = false;
  if (is_palette) {
    // A pixel of less than a byte comes to fill one.
    png_set_packing(s.png);
    image.set(width, height, 8);
    row_bytes = cols;
    setPalette(s.png, s.info, image);
    is_stored = true;
  } else if (color == PNG_COLOR_TYPE_GRAY) {
    image.set(width, height, depth);
    image.setBytesLine(depth / 8 * width);
  } else {
    image.set(width, height, depth * 3);
    image.setBitsPixel(static_cast<int>(row_bytes / cols) * 8);
    image.setBytesLine(static_cast<int>(row_bytes));
    is_stored = color == PNG_COLOR_TYPE_RGB && depth == 8;
    if (color != PNG_COLOR_TYPE_GRAY_ALPHA) {
      image.setColorType(Image::TRUE_COLOR);
      image.setMask(0xff0000, 0x00ff00, 0x0000ff);
    }
  }
  bool result = image.allocData() != 0;
  if (result && is_stored) {
    result = readRows(s.png, s.info, image.getData(), row_bytes);
  } else if (result) {
    std::vector<unsigned char> unused(row_bytes);
    result = readRows(s.png, s.info, unused.data(), 0);
  }
  close();
  return result ? 1 : 0;
}

int PngFile::write(const char* name, const Image& image) {
  return open(name, 1) != 0 ? write(image) : 0;
}

int PngFile::write(const Image& image) {
  if (!opened || access != 1) return 0;
  Image copy;
  const bool convert = index != 0 && image.getColorType() != Image::INDEXED;
  if (!image.validData() || (convert && ImageMath::toIndex(image, 8, copy) == 0)) {
    close();
    return 0;
  }
  const Image& source = convert ? copy : image;
  width = source.getWidth();
  height = source.getHeight();
  depth = source.getDepth();
  Zqv::outDebug(3, "width: %d\n", width);
  Zqv::outDebug(3, "height: %d\n", height);
  Zqv::outDebug(3, "depth: %d\n", depth);
  Zqv::outDebug(3, "bytes_per_line: %d\n", source.getBytesLine());
  Zqv::outDebug(3, "trans_color: %d\n", source.getTransColor());

  PngPicture picture{};
  picture.width = static_cast<png_uint_32>(std::max(width, 0));
  picture.height = static_cast<png_uint_32>(std::max(height, 0));
  switch (source.getColorType()) {
    case Image::INDEXED: setIndexed(source, picture); break;
    case Image::TRUE_COLOR: setTrueColor(source, picture); break;
    default: setData(source, picture); break;
  }
  String now(MAX_DATE + 1);
  DateTool::getCurrent("RFC1123", now);
  String domain;
  if (source.getDomain().isSet()) source.getDomain().toString(domain);
  const std::string texts[] = {title,
                               "ZQV - Sky Watcher v6.0",
                               cutText(now.get(), MAX_DATE),
                               cutText(source.getDatim(), MAX_DATE),
                               cutText(source.getInfo(), MAX_INFO),
                               cutText(domain.get(), MAX_DOMAIN),
                               comment};
  static constexpr const char* keys[] = {"Title",       "Software",    "Creation Time", "Date/Time",
                                         "Information", "Plot Domain", "Comment"};
  constexpr size_t first_optional = 5;
  for (size_t i = 0; i < std::size(texts); i++) {
    if (i < first_optional || !texts[i].empty()) addText(picture, keys[i], texts[i]);
  }

  bool result = false;
  {
    const WriteStructs s(file);
    if (s.info != nullptr && picture.depth >= 1 && picture.depth <= 8) {
      const size_t size = rowBytes(picture);
      std::vector<unsigned char> buffer(size);
      result = writeAll(s.png, s.info, picture, source, buffer.data(), size);
    }
  }
  result = result && file.flush() != 0;
  close();
  return result ? 1 : 0;
}

}  // namespace ZQV
