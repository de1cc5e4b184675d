#include "KmlFile.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <string>

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>
#include <zlib.h>

#include "DynLib.h"
#include "File.h"
#include "FileTool.h"
#include "KmlData.h"
#include "StrLib.h"
#include "String.h"
#include "Zqv.h"

namespace ZQV {

namespace {

constexpr int most_bytes = 32 << 20;
constexpr int most_nodes = 400000;
constexpr int most_entries = 5000;  // of the parser's tables of an element, five an attribute
constexpr int debug_level = 4;
constexpr int debug_detail = 5;

// NOLINTBEGIN(cppcoreguidelines-macro-usage,bugprone-macro-parentheses): one list, for the members
// and for their names

/** What is used of libxml2. */
#define ZQV_XML_NAMES(F)          \
  F(xmlCleanupParser)             \
  F(xmlCreateIOParserCtxt)        \
  F(xmlCtxtUseOptions)            \
  F(xmlDocGetRootElement)         \
  F(xmlFreeDoc)                   \
  F(xmlFreeParserCtxt)            \
  F(xmlNodeGetContent)            \
  F(xmlParseDocument)             \
  F(xmlSAX2CDataBlock)            \
  F(xmlSAX2Characters)            \
  F(xmlSAX2Comment)               \
  F(xmlSAX2ProcessingInstruction) \
  F(xmlSAX2StartElementNs)        \
  F(xmlStopParser)                \
  F(xmlFree)

/** The library, loaded with the first document: most runs have none. */
struct XmlLib {
  XmlLib() {
    if (library.open("libxml2.so.2") == 0) {
      return;
    }
    complete = true;
#define ZQV_XML_FIND(name) complete = library.find(#name, name) != 0 && complete;
    ZQV_XML_NAMES(ZQV_XML_FIND)
#undef ZQV_XML_FIND
  }

#define ZQV_XML_MEMBER(name) decltype(&::name) name = nullptr;
  ZQV_XML_NAMES(ZQV_XML_MEMBER)
#undef ZQV_XML_MEMBER
  DynLib library;
  bool complete = false;
};

// NOLINTEND(cppcoreguidelines-macro-usage,bugprone-macro-parentheses)

const XmlLib& xml() {
  static const XmlLib lib;
  return lib;
}

/** What the parser reads, and how much of it there may still be. */
struct Source {
  explicit Source(const char* path) : file(::gzopen(path, "rb")) {}
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;
  ~Source() {
    if (file != nullptr) {
      ::gzclose(file);
    }
  }

  /** For xmlCreateIOParserCtxt. The parser compares the attributes of an element with each other
   * before a handler hears of it, so an element of very many ends the input. */
  static int read(void* context, char* buffer, int n) {
    auto* source = static_cast<Source*>(context);
    const xmlParserCtxt* parser = source->parser;
    if (parser != nullptr && std::max(parser->maxatts, parser->nsMax) > most_entries) {
      return 0;
    }
    const int wanted = std::min(n, source->bytes_left);
    const int got = wanted > 0 ? ::gzread(source->file, buffer, static_cast<unsigned>(wanted)) : 0;
    source->bytes_left -= std::max(got, 0);
    return std::max(got, 0);
  }

  gzFile file;
  const xmlParserCtxt* parser = nullptr;
  int bytes_left = most_bytes;
};

/** Counts what the document's tree takes, and ends the parsing where that is too much. The parser's
 * own handlers build the tree. */
class Limits {
 public:
  static void install(xmlParserCtxt& context, int& nodes_left) {
    context._private = &nodes_left;
    context.sax->startElementNs = startElement;
    context.sax->characters = characters;
    context.sax->ignorableWhitespace = characters;
    context.sax->cdataBlock = cdata;
    context.sax->comment = comment;
    context.sax->processingInstruction = instruction;
    context.sax->reference = nullptr;
    // KML has no document type; entities, which could be made to grow, come with one.
    context.sax->internalSubset = documentType;
    context.sax->serror = [](void*, xmlErrorPtr) {};
  }

 private:
  static bool take(void* context, int n) {
    auto* parser = static_cast<xmlParserCtxtPtr>(context);
    int& left = *static_cast<int*>(parser->_private);
    left -= n;
    if (left >= 0) {
      return true;
    }
    xml().xmlStopParser(parser);
    return false;
  }
  static void startElement(void* context, const xmlChar* name, const xmlChar* prefix,
                           const xmlChar* uri, int num_spaces, const xmlChar** spaces,
                           int num_attributes, int num_defaulted, const xmlChar** attributes) {
    if (take(context, 1 + num_spaces + 2 * num_attributes)) {
      xml().xmlSAX2StartElementNs(context, name, prefix, uri, num_spaces, spaces, num_attributes,
                                  num_defaulted, attributes);
    }
  }
  static void characters(void* context, const xmlChar* text, int n) {
    // Texts in pieces become one node.
    const auto* parser = static_cast<xmlParserCtxtPtr>(context);
    const bool goes_on = parser->node != nullptr && parser->node->last != nullptr &&
                         parser->node->last->type == XML_TEXT_NODE;
    if (take(context, goes_on ? 0 : 1)) {
      xml().xmlSAX2Characters(context, text, n);
    }
  }
  static void cdata(void* context, const xmlChar* text, int n) {
    if (take(context, 1)) {
      xml().xmlSAX2CDataBlock(context, text, n);
    }
  }
  static void comment(void* context, const xmlChar* text) {
    if (take(context, 1)) {
      xml().xmlSAX2Comment(context, text);
    }
  }
  static void instruction(void* context, const xmlChar* target, const xmlChar* text) {
    if (take(context, 1)) {
      xml().xmlSAX2ProcessingInstruction(context, target, text);
    }
  }
  static void documentType(void* context, const xmlChar* /*name*/, const xmlChar* /*external*/,
                           const xmlChar* /*system*/) {
    xml().xmlStopParser(static_cast<xmlParserCtxtPtr>(context));
  }
};

struct FreeDocument {
  void operator()(xmlDoc* document) const { xml().xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, FreeDocument>;

struct FreeParser {
  void operator()(xmlParserCtxt* context) const { xml().xmlFreeParserCtxt(context); }
};

/** The document as far as it is well formed. */
Document parse(const char* path) {
  Source source(path);
  if (source.file == nullptr || !xml().complete) {
    return nullptr;
  }
  const std::unique_ptr<xmlParserCtxt, FreeParser> context(xml().xmlCreateIOParserCtxt(
      nullptr, nullptr, Source::read, nullptr, &source, XML_CHAR_ENCODING_NONE));
  if (context == nullptr) {
    return nullptr;
  }
  source.parser = context.get();
  int nodes_left = most_nodes;
  xml().xmlCtxtUseOptions(context.get(), XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  Limits::install(*context, nodes_left);
  // Without xmlParserCtxt::recovery the tree isn't built on behind a fault.
  xml().xmlParseDocument(context.get());
  Document document(context->myDoc);
  context->myDoc = nullptr;
  return document;
}

bool isNamed(const xmlNode& node, const char* name) {
  return std::strcmp(reinterpret_cast<const char*>(node.name), name) == 0;
}

std::string contentOf(const xmlNode& node) {
  std::string text;
  if (xmlChar* content = xml().xmlNodeGetContent(&node); content != nullptr) {
    text = reinterpret_cast<const char*>(content);
    (*xml().xmlFree)(content);
  }
  return text;
}

/** Reads numbers as scanf's "%f" does. */
bool takeNumber(const char*& text, float& v) {
  char* end = nullptr;
  v = std::strtof(text, &end);
  const bool taken = end != text;
  text = end;
  return taken;
}

bool takeComma(const char*& text) {
  if (*text != ',') {
    return false;
  }
  text++;
  return true;
}

/** Adds the points of a coordinates text, "LON,LAT,HEIGHT" each. One that isn't complete ends them.
 */
void decodePoints(const std::string& coordinates, KmlData& data) {
  const char* text = coordinates.c_str();
  float lat = 0;
  float lon = 0;
  float height = 0;
  while (takeNumber(text, lon) && takeComma(text) && takeNumber(text, lat) && takeComma(text) &&
         takeNumber(text, height)) {
    data.add(lat, lon);
  }
}

}  // namespace

/** The document and the way through it: the current node on each level. */
struct KmlFile::Walk {
  static constexpr size_t num_levels = 10;

  void rewind() {
    node.fill(nullptr);
    node[0] = reader != nullptr ? xml().xmlDocGetRootElement(reader.get()) : nullptr;
    nlevel = 0;
    name.clear();
    type = KmlData::UNKNOWN;
  }
  /** Looks at the current element. @return true if it gave a list */
  bool visit(KmlData& data) {
    const xmlNode& element = *node[nlevel];
    if (isNamed(element, "Placemark")) {
      name.clear();
      type = KmlData::UNKNOWN;
    } else if (isNamed(element, "name")) {
      name = contentOf(element);
      Zqv::outDebug(debug_level, "KML element %s:%s:\n", "name", name.c_str());
    } else if (isNamed(element, "LineString")) {
      type = KmlData::LINE;
    } else if (isNamed(element, "coordinates")) {
      decodePoints(contentOf(element), data);
      data.setName(name.c_str());
      data.setType(type);
      return true;
    }
    return false;
  }

  Document reader;
  std::array<xmlNode*, num_levels> node{};
  size_t nlevel = 0;
  std::string name;
  int type = KmlData::UNKNOWN;
};

KmlFile::KmlFile() : walk(std::make_unique<Walk>()) {}

KmlFile::~KmlFile() {
  close();
}

int KmlFile::open(const char* name) {
  return open(name, 0);
}

int KmlFile::open(const char* name, int access) {
  close();
  if (access != 0 || !checkType(name)) {
    return 0;
  }
  String path;
  FileTool::addUserPath(name, path);
  walk->reader = parse(path.get());
  walk->rewind();
  if (walk->node[0] == nullptr || !isNamed(*walk->node[0], "kml")) {
    close();
    return 0;
  }
  Zqv::outDebug(debug_level, "KML opened %s\n", name);
  return 1;
}

bool KmlFile::isOpen() const {
  return walk->reader != nullptr;
}

int KmlFile::close() {
  if (!isOpen()) {
    return 0;
  }
  walk->reader.reset();
  walk->rewind();
  xml().xmlCleanupParser();
  return 1;
}

int KmlFile::rewind() {
  walk->rewind();
  return isOpen() ? 1 : 0;
}

bool KmlFile::checkType(const char* name) {
  File file;
  std::array<unsigned char, 5> head{};
  if (file.openPlain(name) == 0) {
    return false;
  }
  const int n = file.read(head.data(), head.size());
  return (n == 5 && std::memcmp(head.data(), "<?xml", 5) == 0) ||
         (n >= 2 && head[0] == 31 && head[1] == 139);
}

int KmlFile::read(KmlData& data) {
  data.init();
  Walk& w = *walk;
  if (!isOpen()) {
    return 0;
  }
  while (w.node[w.nlevel] != nullptr) {
    const xmlNode& here = *w.node[w.nlevel];
    bool found = false;
    if (here.type == XML_ELEMENT_NODE) {
      Zqv::outDebug(debug_detail, "KML %d %s\n", static_cast<int>(w.nlevel),
                    reinterpret_cast<const char*>(here.name));
      found = w.visit(data);
    }
    if (here.type == XML_ELEMENT_NODE && here.children != nullptr &&
        w.nlevel + 1 < Walk::num_levels) {
      w.nlevel++;
      w.node[w.nlevel] = here.children;
      Zqv::outDebug(debug_detail, "KML level+ %d\n", static_cast<int>(w.nlevel));
    }
    w.node[w.nlevel] = w.node[w.nlevel]->next;
    if (w.node[w.nlevel] == nullptr && w.nlevel > 0) {
      w.nlevel--;
      w.node[w.nlevel] = w.node[w.nlevel]->next;
      Zqv::outDebug(debug_detail, "KML level- %d\n", static_cast<int>(w.nlevel));
    }
    if (found) {
      return 1;
    }
  }
  return 0;
}

}  // namespace ZQV
