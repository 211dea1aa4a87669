// Collection suite 2.
#include "calls/slot.h"
#include "refusals.h"
#include "tables/trapped_suite.h"

namespace host::suites {

namespace {

Collection new_collection(Caller) {
    return {};
}

// Also disposes of the streams that the collection adopted.
void dispose(HostState& host, HandleOf<Collection> handle) {
    const Collection collection = host.ledger.dispose<Collection>(handle.handle);
    for (const RawHandle stream : collection.adopted_streams) host.ledger.dispose_adopted_stream(stream);
}

int count(Collection& collection) {
    return static_cast<int>(collection.items.size());
}

AEGP_CollectionItemV2 item_at(Collection& collection, A_u_long index) {
    if (index >= collection.items.size())
        refuse_argument("The collection has " + std::to_string(collection.items.size()) + " items, none at " +
                        std::to_string(index) + ".");
    return collection.items[index];
}

void push_back(HostState& host, Collection& collection, const AEGP_CollectionItemV2& item) {
    if (item.type == AEGP_CollectionItemType_STREAMREF) {
        const RawHandle stream = raw(item.stream_refH);
        host.ledger.adopt_stream(stream);
        collection.adopted_streams.push_back(stream);
    }
    collection.items.push_back(item);
}

void erase(Collection& collection, A_u_long first, A_u_long last) {
    if (first > last || last > collection.items.size())
        refuse_argument("There is no range from " + std::to_string(first) + " to before " + std::to_string(last) +
                        " in a collection of " + std::to_string(collection.items.size()) + " items.");
    const auto begin = collection.items.begin();
    collection.items.erase(begin + static_cast<std::ptrdiff_t>(first), begin + static_cast<std::ptrdiff_t>(last));
}

}  // namespace

template <>
AEGP_CollectionSuite2 make_suite() {
    using Suite = AEGP_CollectionSuite2;
    Suite s = trapped_suite<Suite>();
    s.AEGP_NewCollection = slot<&Suite::AEGP_NewCollection, new_collection>;
    s.AEGP_DisposeCollection = slot<&Suite::AEGP_DisposeCollection, dispose>;
    s.AEGP_GetCollectionNumItems = slot<&Suite::AEGP_GetCollectionNumItems, count>;
    s.AEGP_GetCollectionItemByIndex = slot<&Suite::AEGP_GetCollectionItemByIndex, item_at>;
    s.AEGP_CollectionPushBack = slot<&Suite::AEGP_CollectionPushBack, push_back>;
    s.AEGP_CollectionErase = slot<&Suite::AEGP_CollectionErase, erase>;
    return s;
}

}  // namespace host::suites
