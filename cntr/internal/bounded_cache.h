/// Results kept by argument, bounded in number: the rule of every per-argument cache.
#pragma once

#include "cntr/internal/thread_random.h"

#include <functional>
#include <iterator>
#include <map>
#include <type_traits>
#include <utility>

namespace qnInternal {

/// An ordered map that accepts a new entry while it holds at most `bound` entries and otherwise
/// gives it the place of one drawn at random, by position in key order. So it never holds more
/// than `bound` + 1 entries, unless the bound was lowered after it had filled.
template <class Key, class Value, class Less = std::less<Key>>
class BoundedCache {
public:
    /// The value stored for `key`, or null.
    Value const* find(Key const& key) const
    {
        auto const found = entries_.find(key);
        return found == entries_.end() ? nullptr : &found->second;
    }

    /// Stores `value` for `key`, which is not there yet. A throw leaves the cache as it was.
    void insert(Key const& key, Value const& value, long bound)
    {
        auto const count = static_cast<long>(entries_.size());
        if (count <= bound || count == 0) {
            entries_.emplace(key, value);
            return;
        }
        static_assert(std::is_nothrow_copy_assignable_v<Key> &&
                      std::is_nothrow_copy_assignable_v<Value>);
        // By position in key order, so that equal histories give equal caches.
        auto entry = entries_.extract(std::next(entries_.begin(), randomIndex(count)));
        entry.key() = key;
        entry.mapped() = value;
        entries_.insert(std::move(entry));
    }

    std::size_t size() const { return entries_.size(); }

private:
    std::map<Key, Value, Less> entries_;
};

}  // namespace qnInternal
