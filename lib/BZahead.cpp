#include "BZahead.h"

#include <algorithm>
#include <cstdlib>
#include <system_error>
#include <utility>

#include "BZlib.h"

namespace ZQV {

namespace {

constexpr int most_threads = 2;  ///< more cost memory that a volume doesn't repay
/** Decompressed bytes of a record that are held: those seen have up to 1.5 million. */
constexpr int64_t ring_size = 3 << 19;
/** Compressed bytes of all records from which on no further one is read. */
constexpr size_t most_held = 4 << 20;
/** A step of decompression, in bytes out and in: short, to end soon when told so. */
constexpr int64_t out_step = 1 << 16;
constexpr size_t in_step = 1 << 13;
static_assert(ring_size % out_step == 0);

}  // namespace

int BZahead::coreThreads() {
  const auto cores = static_cast<int>(std::thread::hardware_concurrency());
  double load = 0;
  if (cores < 2 || (getloadavg(&load, 1) == 1 && load >= cores)) {
    return 0;
  }
  return std::min(cores, most_threads);
}

bool BZahead::start(int num_threads, Source next_record) {
  stop();
  source = std::move(next_record);
  stopping = ended = begun = false;
  held = 0;
  most_records = static_cast<size_t>(num_threads) + 1;
  try {
    for (int i = 0; i < num_threads; i++) {
      threads.emplace_back([this] { work(); });
    }
  } catch (const std::system_error&) {
    // Those that did start do all.
  }
  return isStarted();
}

void BZahead::stop() {
  {
    const std::lock_guard lock(state);
    stopping = true;
  }
  progress.notify_all();
  for (std::thread& thread : threads) {
    thread.join();
  }
  threads.clear();
  records.clear();
}

void BZahead::work() {
  BZlib bz;
  for (std::shared_ptr<Record> record; (record = fetch()) && unpack(*record, bz);) {
  }
}

/** The next record, once there is room for it; none behind the last. */
std::shared_ptr<BZahead::Record> BZahead::fetch() {
  const std::lock_guard order(reading);
  std::shared_ptr<Record> record;
  {
    std::unique_lock lock(state);
    progress.wait(
        lock, [this] { return stopping || (records.size() < most_records && held < most_held); });
    if (stopping || ended) {
      return nullptr;
    }
    record = std::exchange(spare, nullptr);
  }
  if (!record) {
    record = std::make_shared<Record>();
    // Untouched until it is written.
    record->ring = std::make_unique_for_overwrite<unsigned char[]>(ring_size);
  }
  const bool got = source(record->in);
  record->made = record->used = 0;
  record->end = OPEN;
  {
    const std::lock_guard lock(state);
    if (got) {
      held += record->in.size();
      records.push_back(record);
    } else {
      ended = true;
      record = nullptr;
    }
  }
  progress.notify_all();
  return record;
}

/** @return false when told to stop */
bool BZahead::unpack(Record& record, BZlib& bz) {
  bz.init();
  size_t fed = 0;
  for (End end = OPEN; end == OPEN;) {
    if (bz.getAvailIn() == 0 && fed < record.in.size()) {
      const size_t n = std::min(in_step, record.in.size() - fed);
      bz.setIn(record.in.data() + fed, static_cast<int>(n));
      fed += n;
    }
    int64_t room = 0;
    {
      std::unique_lock lock(state);
      // Whole steps, wherever the reader is: what a fault leaves of one would hang on that.
      room = out_step - record.made % out_step;
      progress.wait(lock, [this, &record, room] {
        return stopping || record.made - record.used <= ring_size - room;
      });
      if (stopping) {
        return false;
      }
    }
    bz.setOut(record.ring.get() + record.made % ring_size, static_cast<int>(room));
    const int stat = bz.decomp();
    const int64_t made = room - bz.getAvailOut();
    if (bz.isError()) {
      end = FAULT;
    } else if (stat == BZ_STREAM_END) {
      end = WHOLE;
    } else if (made == 0 && bz.getAvailIn() == 0 && fed == record.in.size()) {
      end = CUT;
    }
    if (made > 0 || end != OPEN) {
      {
        const std::lock_guard lock(state);
        record.made += made;
        record.end = end;
      }
      progress.notify_all();
    }
  }
  return true;
}

int BZahead::next() {
  std::unique_lock lock(state);
  if (begun && !records.empty()) {
    Record& left = *records.front();
    while (left.end == OPEN) {
      left.used = left.made;
      progress.notify_all();
      progress.wait(lock, [&left] { return left.end != OPEN || left.made > left.used; });
    }
    held -= left.in.size();
    spare = std::move(records.front());
    records.pop_front();
    progress.notify_all();
  }
  begun = true;
  progress.wait(lock, [this] { return stopping || ended || !records.empty(); });
  return records.empty() ? 0 : static_cast<int>(records.front()->in.size());
}

int BZahead::read(unsigned char* dest, int room) {
  std::unique_lock lock(state);
  int done = 0;
  while (done < room && !records.empty()) {
    Record& record = *records.front();
    progress.wait(lock, [&record] { return record.made > record.used || record.end != OPEN; });
    const int64_t place = record.used % ring_size;
    const int n = static_cast<int>(std::min(
        {record.made - record.used, ring_size - place, static_cast<int64_t>(room - done)}));
    if (n == 0) {
      break;
    }
    lock.unlock();
    std::copy_n(record.ring.get() + place, n, dest + done);
    lock.lock();
    record.used += n;
    done += n;
    progress.notify_all();
  }
  return done;
}

BZahead::End BZahead::getEnd() {
  const std::lock_guard lock(state);
  if (records.empty()) {
    return CUT;
  }
  const Record& record = *records.front();
  return record.used < record.made ? OPEN : record.end;
}

}  // namespace ZQV
