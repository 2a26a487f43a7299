/// Counts the changes that tracked objects tell of.
#pragma once

#include <qc/core/persistent.h>

namespace qnTest {

struct Changes : qcChangeListener {
    Changes() { qcPersistent::addListener(*this); }
    ~Changes() override { qcPersistent::removeListener(*this); }
    void changed(qcPersistent const&) noexcept override { ++count; }
    int count = 0;
};

}  // namespace qnTest
