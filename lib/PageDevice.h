#pragma once

#include <string>

#include "Device.h"
#include "File.h"
#include "GeomBox.h"
#include "Listener.h"
#include "PageBuffer.h"
#include "Rect.h"

namespace ZQV {

class RGB;
class Strings;

/** What the devices that write one page to a file share: the file, the page, the attributes of the
 *  elements, and the operations of a screen, which do nothing here. The y axis of the page runs
 * upward from the lower left corner. */
class PageDevice : public Device, public Listener {
 public:
  int getDevice(String& out) override;
  int setTitle(const char* text) override;
  int setIcon(bool flag) override;
  int setFixed(bool flag) override;
  int setInverse(bool flag) override;
  bool getInverse() override { return inverse; }
  int setSize(float w, float h) override;
  int getSize(float& w, float& h) override;
  float getWidth() override { return width; }
  float getHeight() override { return height; }
  int setOffset(float dx, float dy) override;
  int getOffset(float& dx, float& dy) override;
  int getCoords(Rect& rect) override;
  Rect getCoords() override;
  /** Red, green and blue in a byte each, red in the highest; channels are cut at 0.0 and 1.0. */
  int allocColor(float r, float g, float b) override;
  int setColor(int element, int value) override;
  int setLineWidth(int element, float w) override;
  int setLineStyle(int element, int style) override;
  int setFillStyle(int element, int style) override;
  int drawImage(Image& image, float px, float py) override = 0;
  /** The mode is ignored. */
  int drawImage(Image& image, int mode, float px, float py) override;
  /** There is nothing to read back: the image becomes empty. */
  int getImage(Image& image) override;
  Rect getClip() override;
  int setClip(float x1, float y1, float x2, float y2) override = 0;
  int setClip(const Rect& rect) override;

  // Of a screen, without effect.
  int resize(float w, float h) override;
  int manage() override { return 1; }
  int unmanage() override { return 1; }
  int addCallback(const char* type, Listener* listener, const void* client) override;
  int doCallback(const char* type, const char* data) override;
  void callback(const char* type, const char* data, const void* client) override;
  int update() override { return 1; }
  int clear() override { return 1; }
  int clearRect(const Rect& rect) override;
  int setBackground(const char* color) override;
  int setImageAlign(int horizontal, int vertical) override;
  int setFont(const char* font) override;
  int setTextAlign(int horizontal, int vertical) override;
  int drawText(const Point& p, const char* text) override;
  int setCursor(int cursor) override;
  int copyFrame(int to, int from) override;
  int displayFrame(int frame) override;
  int clearFrame(int frame) override;
  int newFrame(int frame) override;
  int newFrame() override { return 0; }
  bool isLooping() override { return false; }
  int getFrame() override { return 0; }
  int setFrame(int frame) override;
  int incFrame(int step) override;
  int deleteFrame(int frame) override;
  int getNumFrames() override { return 0; }
  int bell(int volume) override;

 protected:
  /** @param kind      name of the device
   *  @param max_name  characters that the file name may have */
  PageDevice(const char* kind, size_t max_name) : name(kind), max_filename(max_name) {}

  /** Back to the defaults that all these devices share. */
  void initPage(const char* file_name, float w, float h);
  void setFilename(const char* text);
  /** Opens the output by its name, "|command", "+file" to append, or a file, and says so.
   *  @return 1; 0 after "<Class>: unable to output to file" */
  int openOutput(const char* class_name, bool& appending);
  void closeOutput();
  /** The date and time for a comment. */
  static std::string currentDate();
  /** Takes "color", "gray", "scale=" or "lwidth="; a number out of all measure changes nothing.
   *  @return false if item i is none of them */
  bool takePenOption(const Strings& items, int i);
  /** Width and height of a paper in inches by its name, such as "a4". */
  static bool paperSize(const char* paper, float& w, float& h);

  File file;
  PageBuffer out{file};
  bool opened = false;
  bool inverse = false;
  bool icon = false;
  int fixed = 0;
  float width = 0.0F;
  float height = 0.0F;
  float x = 0.0F;
  float y = 0.0F;
  std::string name;
  std::string filename;
  std::string title;  ///< at most 59 characters
  GeomBox clip;
  int line_color = 0;
  int line_style = 1;
  float line_width = 1.0F;
  int text_color = 0;
  float text_width = 1.0F;
  int fill_color = 0;
  int fill_style = 0;
  int mark_color = 0;
  float mark_width = 1.0F;
  int color = 0;            ///< 1 in colour, 0 in gray
  float scale = 1.0F;       ///< of the whole page
  float base_width = 1.0F;  ///< factor of all line widths
  int line_bold = 1;        ///< another of those of lines

 private:
  size_t max_filename;
};

}  // namespace ZQV
