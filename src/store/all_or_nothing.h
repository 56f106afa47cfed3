#pragma once

#include "store/store.h"

namespace dovrex {

// RAII for a change that lands whole or not at all: commit() keeps it; leaving the scope without
// commit() (Stop, a close, an error) takes back every write made inside, nested passes' included,
// and the store is as it was when the scope began. A savepoint inside the outer transaction, so it
// nests under a Transaction and a Transaction nests under it. A failed commit() raises.
class AllOrNothing {
  public:
    explicit AllOrNothing(Store& store);
    ~AllOrNothing();
    void commit();
    AllOrNothing(const AllOrNothing&) = delete;
    AllOrNothing& operator=(const AllOrNothing&) = delete;

  private:
    Store& store_;
    bool open_ = true;
};

}  // namespace dovrex
