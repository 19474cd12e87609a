#pragma once

#include "store/Store.h"

namespace kelvane {

// For a walk that reads every date of the document: both temporary stores are
// read into memory once, and the walk's reads find their records there instead
// of asking the disk date by date. A write drops a store's copy; the walk's end
// drops both.
class StoreReadAhead {
  public:
    explicit StoreReadAhead(Store& store) : store_(store) {
        store_.appointments.ReadAhead();
        store_.diary.ReadAhead();
    }
    ~StoreReadAhead() {
        store_.appointments.StopReadingAhead();
        store_.diary.StopReadingAhead();
    }
    StoreReadAhead(const StoreReadAhead&) = delete;
    StoreReadAhead& operator=(const StoreReadAhead&) = delete;

  private:
    Store& store_;
};

}  // namespace kelvane
