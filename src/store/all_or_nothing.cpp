#include "store/all_or_nothing.h"

namespace dovrex {

AllOrNothing::AllOrNothing(Store& store) : store_(store) {
    store_.begin();
    try {
        store_.execute(QStringLiteral("SAVEPOINT all_or_nothing"));
    } catch (...) {
        store_.commit();
        throw;
    }
}

void AllOrNothing::commit() {
    if (!open_) return;
    store_.execute(QStringLiteral("RELEASE all_or_nothing"));
    open_ = false;
    store_.commit();
}

AllOrNothing::~AllOrNothing() {
    if (!open_) return;
    // An engine that already abandoned the transaction (a full disc) has no savepoint left to go
    // back to; the outer end is then the engine's own rollback.
    try {
        store_.execute(QStringLiteral("ROLLBACK TO all_or_nothing"));
        store_.execute(QStringLiteral("RELEASE all_or_nothing"));
    } catch (...) {
    }
    try {
        store_.commit();
    } catch (...) {
    }
}

}  // namespace dovrex
