#include "Lev2Maker.h"

#include <bit>
#include <cmath>

#include "NidsMaker.h"

namespace ZQV {

namespace {

std::string u1(int v) {
  return std::string(1, static_cast<char>(v));
}

std::string u2(int v) {
  return NidsMaker::u2(v);
}

std::string u4(int64_t v) {
  return NidsMaker::u4(v);
}

std::string f4(double v) {
  return u4(std::bit_cast<uint32_t>(static_cast<float>(v)));
}

std::string bytes(const std::vector<int>& levels) {
  std::string out;
  for (const int level : levels) {
    out += u1(level);
  }
  return out;
}

std::string messageHead(int type, size_t size) {
  return std::string(12, '\0') + u2(static_cast<int>(size / 2)) + u1(0) + u1(type) + u2(7) +
         u2(18093) + u4(43237812) + u2(1) + u2(1);
}

int angle(double degrees) {
  return static_cast<int>(std::lround(degrees / 0.0439453125)) * 8;
}

std::string block(const Lev2Maker::Moment& moment) {
  return moment.name + u4(0) + u2(static_cast<int>(moment.levels.size())) + u2(moment.first) +
         u2(moment.spacing) + u2(0) + u2(0) + u1(0) + u1(8) +
         f4(static_cast<double>(moment.scale)) + f4(static_cast<double>(moment.offset)) +
         bytes(moment.levels);
}

}  // namespace

std::string Lev2Maker::header() const {
  return "AR2V0006.123" + u4(days) + u4(msecs) + site;
}

std::string Lev2Maker::message1(const Radial& radial) const {
  constexpr int start = 100;
  constexpr size_t record_size = 2432;
  const auto num_refl = static_cast<int>(radial.refl.levels.size());
  const auto num_vel = static_cast<int>(radial.vel.levels.size());
  std::string body = u4(1000) + u2(18093) + u2(4660) + u2(angle(radial.azimuth)) + u2(1) + u2(1) +
                     u2(angle(radial.elevation)) + u2(radial.cut) + u2(radial.refl.first) +
                     u2(radial.vel.first) + u2(radial.refl.spacing) + u2(radial.vel.spacing) +
                     u2(num_refl) + u2(num_vel) + u2(1) + u4(0) + u2(num_refl > 0 ? start : 0) +
                     u2(num_vel > 0 ? start + num_refl : 0) + u2(0) + u2(radial.vel_res) + u2(vcp);
  body.resize(start + 12, '\0');
  body += bytes(radial.refl.levels) + bytes(radial.vel.levels);
  std::string message = messageHead(1, 2416) + body;
  message.resize(record_size, '\0');
  return message;
}

std::string Lev2Maker::message31(const Radial& radial) const {
  constexpr int pointers = 32;
  int at = pointers + 6 * 4;
  std::string blocks;
  std::string list;
  const auto add = [&](const std::string& data) {
    list += u4(data.empty() ? 0 : at);
    blocks += data;
    at += static_cast<int>(data.size());
  };
  add("RVOL" + u2(44) + u2(0x0101) + f4(35.33336) + f4(-97.27776) + u2(370) +
      std::string(22, '\0') + u2(vcp) + u2(0));
  add("RELV" + u2(12) + u2(12) + f4(0));
  add("RRAD" + u2(20) + std::string(10, '\0') + u2(827) + u2(0));
  add(radial.refl.levels.empty() ? "" : block(radial.refl));
  add(radial.vel.levels.empty() ? "" : block(radial.vel));
  list += u4(0);
  if (blocks.size() % 2 != 0) {
    blocks += '\0';
  }
  const std::string body = "KTLX" + u4(1000) + u2(18093) + u2(1) + f4(radial.azimuth) + u2(0) +
                           u2(at) + u1(radial.half_degree ? 1 : 2) + u1(1) + u1(radial.cut) +
                           u1(1) + f4(radial.elevation) + u1(0) + u1(0) + u2(5) + list + blocks;
  return messageHead(31, body.size() + 16) + body;
}

std::string Lev2Maker::other(int type) {
  std::string message = messageHead(type, 2416);
  message.resize(2432, '\x55');
  return message;
}

std::string Lev2Maker::record(const std::string& messages, bool negative) {
  const std::string packed = NidsMaker::bzip2(messages);
  const auto size = static_cast<int64_t>(packed.size());
  return u4(negative ? -size : size) + packed;
}

}  // namespace ZQV
