// Brings what a source offers into the store. Not public.
#pragma once

#include "ZkCatalogue.h"
#include "ZkPresetStore.h"

#include <functional>

namespace zk::datamodel {

// Each source is the authority for its own items: theirs are added, changed and removed as the
// catalogue says. Of an item that another source has too, the higher version wins, and what is there
// wins a tie. Nothing on disk is touched but the files of removed items; an item that the server has
// dropped stays while it is on disk, because somebody chose it.
//
// Busy items are those of a download that is under way: they are not removed.
//
// All or nothing; false, with the reason in store.errorText().
bool mergeCatalogue(storage::PresetStore &store,
                    const Catalogue &catalogue,
                    storage::ItemOrigin origin,
                    const std::function<bool(qint64)> &isBusy);

} // namespace zk::datamodel
