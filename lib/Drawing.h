#pragma once

namespace ZQV {

class Date;
class Domain;
class Plot;

/** What a Figure can draw. All operations return nonzero on success unless stated. */
class Drawing {
 public:
  Drawing() = default;
  Drawing(const Drawing&) = default;
  Drawing& operator=(const Drawing&) = default;
  virtual ~Drawing() = default;

  /** Sets defaults and reads the resources. */
  virtual int init() = 0;
  /** Gives the domain that suits the data. */
  virtual int getDomain(Domain& domain) = 0;
  /** Applies the file-related resources. */
  virtual int setFile() = 0;
  /** Chooses the input type by name. */
  virtual int setInput(const char* name) = 0;
  /** Chooses the name convention. */
  virtual int setNameConv(const char* conv) = 0;
  /** Resolves the file from the resources; may prompt. */
  virtual int setFilename() = 0;
  /** Resolves the file from a given text. */
  virtual int setFilename(const char* text) = 0;
  /** Resolves the file for a date. */
  virtual int setFilename(Date& date) = 0;
  /** Resolves the file for a date and a qualifier; nonzero if a file is there. */
  virtual int setFilename(Date& date, const char* text) = 0;
  /** Selects a forecast time. */
  virtual int setForeTime(const char* time) = 0;
  /** Takes a comma-separated parameter text. */
  virtual int setParam(const char* text) = 0;
  /** The date of the file now selected. */
  virtual int getDate(Date& date) = 0;
  /** Nonzero if the drawing can take part in a loop; the value becomes the Figure's loop type. */
  virtual int getLoopType() = 0;
  /** The date at which a loop should end. */
  virtual int getInitDate(Date& date) = 0;
  /** Seconds between two frames. */
  virtual int getDateOffset() = 0;
  /** Frames wanted. */
  virtual int getNumFrames() = 0;
  /** Nonzero if this drawing sets the Figure's time base. */
  virtual int getSync() = 0;
  /** Draws the current selection. */
  virtual int draw(Plot& plot) = 0;
  /** Describes itself on standard output. */
  virtual int print() = 0;
};

}  // namespace ZQV
