#include "screen/shared_state.h"

namespace dovrex {

SharedState& shared() {
    static SharedState state;
    return state;
}

void reset_SharedState() {
    Screen* installed = shared().screen;
    shared() = SharedState{};
    shared().screen = installed;
}

Store& store() {
    if (!shared().g_Store) throw StoreError(QStringLiteral("no store is open"));
    return *shared().g_Store;
}

Screen& screen() {
    static NullScreen silent;
    return shared().screen ? *shared().screen : silent;
}

std::shared_ptr<Cursor> store_Query(const QString& sql, const QVariantList& params) {
    return store().query(sql, params);
}

int store_Execute(const QString& sql, const QVariantList& params) {
    return store().execute(sql, params);
}

void store_ClearTable(const QString& name) {
    store().clearTable(name);
}

}  // namespace dovrex
