#pragma once

namespace ZQV {

/** One entry of an image's colour table. A red of exactly -1.0 marks a transparent entry. */
class ImageColor {
 public:
  void init() { *this = ImageColor(); }

  float r = 0.0F;  ///< channels from 0.0 to 1.0
  float g = 0.0F;
  float b = 0.0F;
  int val = 0;  ///< pixel value that a device gave the entry
};

}  // namespace ZQV
