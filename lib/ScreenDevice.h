#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "Device.h"
#include "Four.h"
#include "Listener.h"

namespace ZQV {

/** One frame of an animation. */
struct XFrame {
  std::string title;
  unsigned long pixmap = 0;  ///< its picture, 0 for none
  float delay = 0.0F;        ///< seconds
  int flag = 0;
};

/** What the devices share that paint pixels: size and place, the rules of coordinates, colours and
 * images, and the frames of an animation. The picture is drawn on a pixmap, the base one or that of
 * a frame, and shown by update(). The y axis runs downward from the upper left corner. All
 * operations return 0 on a device that isn't open, where they need it to be. */
class ScreenDevice : public Device, public Listener {
 public:
  /** Frame numbers with a meaning of their own. */
  enum FrameNumber { LAST_FRAME = -1, CURRENT_FRAME = -2, BASE_PIXMAP = -3 };
  /** Fills and dashes. */
  static constexpr int NUM_FILL = 20;

  int init() override;
  int setTitle(const char* text) override;
  [[nodiscard]] const char* getTitle() const { return title.c_str(); }
  int setIcon(bool flag) override;
  int setFixed(bool flag) override;
  int setInverse(bool flag) override;
  bool getInverse() override { return inverse; }
  int setBackground(const char* color) override;
  int setSize(float w, float h) override;
  int getSize(float& w, float& h) override;
  float getWidth() override { return static_cast<float>(width); }
  float getHeight() override { return static_cast<float>(height); }
  int setOffset(float px, float py) override;
  int getOffset(float& px, float& py) override;
  int getCoords(Rect& rect) override;
  Rect getCoords() override;
  int setImageAlign(int horizontal, int vertical) override;
  int setTextAlign(int horizontal, int vertical) override;
  Rect getClip() override;
  int setClip(float x1, float y1, float x2, float y2) override;
  int setClip(const Rect& rect) override;
  int clear() override;
  int message(const char* text) override;
  int drawImage(Image& image, float px, float py) override;
  int drawImage(Image& image, int trans, float px, float py) override;

  // Frames.

  /** Pixmap of a frame by its number, 0 if there is none. */
  [[nodiscard]] unsigned long getFramePixmap(int i) const;
  int copyFrame(int to, int from) override;
  int displayFrame(int frame) override;
  int clearFrame(int frame) override;
  /** @return 1; 0 if there is no room for another frame */
  int newFrame(int frame) override;
  /** @return the count of frames before */
  int newFrame() override;
  bool isLooping() override { return looping != 0; }
  int getFrame() override { return cur_frame; }
  int setFrame(int frame) override;
  /** @return 1; -1 without frames */
  int incFrame(int step) override;
  int deleteFrame(int frame) override;
  /** All of them. */
  int deleteFrame();
  int getNumFrames() override { return num_frame; }
  /** Starts or stops the animation. */
  int toggleLoop();
  /** Seconds of a frame, less for a positive sign, more for a negative one. @return 1 */
  int loopRate(int sign);
  [[nodiscard]] float getDelay() const { return delay; }
  /** 1 forward, 0 backward, 2 and 3 back and forth, going down and up. */
  void setDirection(int v) { direct = v; }

 protected:
  /** As X has it. */
  struct ClipBox {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
  };
  /** Placed image: what is painted where. */
  struct ImagePlace {
    int x = 0;
    int y = 0;
    bool masked = false;  ///< some pixels stay unpainted
    int trans = 0;        ///< value of those, where by_value
    bool by_value = false;
  };

  /** A pixmap of the device's size. @return 0 if it can't be had */
  virtual unsigned long createPixmap() = 0;
  virtual void freePixmap(unsigned long pixmap) = 0;
  virtual void copyPixmap(unsigned long to, unsigned long from) = 0;
  virtual void fillPixmap(unsigned long pixmap, int color) = 0;
  /** Makes clip the device's. */
  virtual void applyClip() = 0;
  virtual int paintImage(Image& image, const ImagePlace& place) = 0;
  /** Shows a title. */
  virtual void showTitle(const char* text) = 0;

  /** A coordinate as a pixel: 0.5 added, truncated toward zero, held within 16 bits. */
  static int pixel(float v) {
    constexpr float limit = 32766.0F;
    v = v > -limit ? v : -limit;
    v = v < limit ? v : limit;
    const float moved = 0.5F + v;
    return static_cast<int>(moved);
  }
  /** The same of four. */
  static Four::Ints pixels(Four::Floats v) {
    constexpr float limit = 32766.0F;
    v = Four::least(Four::most(v, Four::all(-limit)), Four::all(limit));
    return Four::cut(0.5F + v);
  }
  /** Pixels of a line width. */
  static int widthPixels(float w);
  /** On and off lengths of a line style in turn, none for a solid line. */
  struct Dashes {
    std::array<unsigned char, 4> list{};
    int n = 0;
  };
  static Dashes dashes(int style);
  /** Stipple of a fill style, eight rows, the least significant bit on the left. */
  static const std::array<unsigned char, 8>& stipple(int style);
  /** A channel of a colour in 16 bits. */
  static int channel(float v);

  bool opened = false;
  bool inverse = false;
  int width = 640;
  int height = 512;
  int x = 100;
  int y = 100;
  int fixed = 1;
  bool icon = false;
  std::string name;
  std::string title;       ///< at most 39 characters
  std::string background;  ///< colour name, at most 39 characters
  int fore_color = 0;
  int back_color = 0;
  int bg_color = 0;
  ClipBox clip;
  unsigned long dwindow = 0;  ///< the base pixmap
  unsigned long drawing = 0;  ///< what receives all drawing: dwindow or a frame's pixmap
  int show_win_num = 0;       ///< the frame number in the title
  int text_halign = 2;
  int text_valign = 2;
  int image_halign = 1;
  int image_valign = 3;
  int max_frame = 128;
  int num_frame = 0;
  int cur_frame = 0;
  int looping = 0;
  int direct = 1;
  float delay = 0.5F;
  float end_delay = 1.0F;
  int start_frame = -1;
  int end_frame = -1;
  std::vector<XFrame> frames;

 private:
  static int allocTable(Device& device, Image& image);
};

}  // namespace ZQV
