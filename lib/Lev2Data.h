#pragma once

#include <string>

#include "Const.h"

namespace ZQV {

/** Header of one radial of a Level II volume, as Lev2File::getBlock finds it. Numbers are
 * Const::MISS or Const::FMISS until a message has told them. */
class Lev2Data {
 public:
  void init() { *this = Lev2Data(); }
  /** Writes one line a field at debug level 1. */
  void print() const;

  std::string id;               ///< site, 4 characters; message 31 only
  float lat = Const::FMISS;     ///< of the site, degrees north; message 31 only
  float lon = Const::FMISS;     ///< degrees east; message 31 only
  int elev = Const::MISS;       ///< height of the site, metres; message 31 only
  int code = Const::MISS;       ///< reserved
  int type = Const::MISS;       ///< message type
  int seq = Const::MISS;        ///< message sequence number
  int date = Const::MISS;       ///< of the message, days; day 1 is 1 January 1970
  int time = Const::MISS;       ///< of the message, milliseconds of the day
  int num_seg = Const::MISS;    ///< segments of the message
  int seg_num = Const::MISS;    ///< number of this one
  int coll_time = Const::MISS;  ///< collection time, milliseconds of the day
  int mod_date = Const::MISS;   ///< modified Julian date, counted as date
  float range = Const::FMISS;   ///< unambiguous range, km; message 1 only
  float rad_az = Const::FMISS;  ///< azimuth of the radial's middle, degrees
  int rad_num = Const::MISS;
  int rad_status = Const::MISS;
  int rad_len = Const::MISS;      ///< bytes; message 31 only
  float az_space = Const::FMISS;  ///< width of the radial, degrees
  int comp = Const::MISS;         ///< compression indicator; message 31 only
  float elev_ang = Const::FMISS;  ///< elevation, degrees
  int elev_num = Const::MISS;     ///< number of the cut, from 1
  int rad_blank = Const::MISS;    ///< message 31 only, as the next two
  int az_index = Const::MISS;
  int blk_count = Const::MISS;      ///< data blocks
  float first_refl = Const::FMISS;  ///< range to the first gate, km
  float first_vel = Const::FMISS;
  float refl_size = Const::FMISS;  ///< spacing of the gates, km
  float vel_size = Const::FMISS;
  int num_refl = Const::MISS;  ///< gates
  int num_vel = Const::MISS;
  int sector_num = Const::MISS;
  int refl_ptr = Const::MISS;  ///< where the data stand, bytes from the message's start; 0: none
  int vel_ptr = Const::MISS;
  int spect_ptr = Const::MISS;
  int vol_ptr = Const::MISS;  ///< message 31 only, as the next two
  int elev_ptr = Const::MISS;
  int rad_ptr = Const::MISS;
  float vel_res = Const::FMISS;  ///< code of the Doppler resolution, 2 for 0.5 m/s; message 1 only
  int cov_patt = Const::MISS;    ///< volume coverage pattern
  float nyquist_vel = Const::FMISS;      ///< m/s
  float atmos_atten = Const::FMISS;      ///< dB/km
  float threshold_param = Const::FMISS;  ///< dB; message 1 only
};

}  // namespace ZQV
