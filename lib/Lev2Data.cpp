#include "Lev2Data.h"

#include "Zqv.h"

namespace ZQV {

void Lev2Data::print() const {
  const auto out_int = [](const char* name, int v) { Zqv::outDebug("%s: %d\n", name, v); };
  const auto out_float = [](const char* name, int digits, float v) {
    Zqv::outDebug("%s: %.*f\n", name, digits, static_cast<double>(v));
  };
  Zqv::outDebug("Identifier: %s\n", id.c_str());
  out_float("Latitude", 3, lat);
  out_float("Longitude", 3, lon);
  out_int("Elevation", elev);
  out_int("Mess type", type);
  out_int("Seq", seq);
  out_int("Date", date);
  out_int("Time", time);
  out_int("Num seg", num_seg);
  out_int("Seg num", seg_num);
  out_float("Range", 1, range);
  out_float("Rad azimuth", 2, rad_az);
  out_int("Rad num", rad_num);
  out_int("Rad status", rad_status);
  out_int("Compression", comp);
  out_float("Elev ang", 2, elev_ang);
  out_int("Elev num", elev_num);
  out_int("Block count", blk_count);
  out_float("Range to first refl", 2, first_refl);
  out_float("Range to first vel", 2, first_vel);
  out_float("Refl data size", 2, refl_size);
  out_float("Doppler data size", 2, vel_size);
  out_int("Num refl gates", num_refl);
  out_int("Num vel gates", num_vel);
  out_int("Sector num within cut", sector_num);
  out_int("Refl data ptr", refl_ptr);
  out_int("Dop data ptr", vel_ptr);
  out_int("Spect data ptr", spect_ptr);
  out_int("Volume data ptr", vol_ptr);
  out_int("Elevation data ptr", elev_ptr);
  out_int("Radial data ptr", rad_ptr);
  out_float("Doppler res", 2, vel_res);
  out_int("Coverage patt", cov_patt);
}

}  // namespace ZQV
