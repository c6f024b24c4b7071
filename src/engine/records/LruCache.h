#pragma once

#include <cstddef>
#include <functional>
#include <list>
#include <unordered_map>
#include <utility>

namespace velmora::engine::records {

// A bounded map that forgets what was not asked for the longest. Look-ups take anything that Hash and Equal take.
template <typename Key, typename T, typename Hash = std::hash<Key>, typename Equal = std::equal_to<>>
class LruCache {
public:
    explicit LruCache(std::size_t bound) : bound_(bound) {}

    // Null when unknown. Good until the next Insert or Clear.
    template <typename K>
    T* Find(const K& key) {
        const auto found = places_.find(key);
        if (found == places_.end()) {
            return nullptr;
        }
        entries_.splice(entries_.begin(), entries_, found->second);
        return &found->second->second;
    }

    // The key must not be known yet.
    T& Insert(Key key, T value) {
        if (entries_.size() >= bound_) {
            places_.erase(entries_.back().first);
            entries_.pop_back();
        }
        entries_.emplace_front(key, std::move(value));
        places_.emplace(std::move(key), entries_.begin());
        return entries_.front().second;
    }

    void Clear() {
        places_.clear();
        entries_.clear();
    }

    std::size_t Size() const { return entries_.size(); }

private:
    using Entries = std::list<std::pair<Key, T>>;

    std::size_t bound_;
    Entries entries_;
    std::unordered_map<Key, typename Entries::iterator, Hash, Equal> places_;
};

} // namespace velmora::engine::records
