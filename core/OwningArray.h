#pragma once
#include <memory>
#include <string>
#include <vector>

#include "platform/Log.h"

// An owning array of heap-held records with object-array semantics: Add and Insert store a heap
// copy of the record given, RemoveAt deletes one, copying the array copies every record. Records
// keep their address while the array grows, so lookups can hand out pointers to live records.
template <typename Record>
class OwningArray {
  public:
    explicit OwningArray(const char* name) : name_(name) {}
    OwningArray(const OwningArray& other) : name_(other.name_) { CopyFrom(other); }
    OwningArray& operator=(const OwningArray& other) {
        if (this != &other)
            CopyFrom(other);
        return *this;
    }

    void Add(const Record& record) { items_.push_back(std::make_unique<Record>(record)); }
    void Insert(const Record& record, size_t index) {
        if (index > items_.size())
            index = items_.size();
        items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(index),
                      std::make_unique<Record>(record));
    }
    void RemoveAt(size_t index) {
        if (index >= items_.size()) {
            CORVANE_LOG_ERROR(name_, std::string("bad index in ") + name_ + "::RemoveAt()");
            return;
        }
        items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index));
    }
    void Clear() { items_.clear(); }

    size_t GetCount() const { return items_.size(); }
    bool IsEmpty() const { return items_.empty(); }
    Record& operator[](size_t index) { return *items_[index]; }
    const Record& operator[](size_t index) const { return *items_[index]; }
    Record& Item(size_t index) { return *items_[index]; }
    Record& Last() { return *items_.back(); }

    // Range-for over the records themselves.
    template <typename Inner, typename Value>
    class Iterator {
      public:
        explicit Iterator(Inner it) : it_(it) {}
        Value& operator*() const { return **it_; }
        Value* operator->() const { return it_->get(); }
        Iterator& operator++() {
            ++it_;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return it_ != other.it_; }

      private:
        Inner it_;
    };
    using iterator = Iterator<typename std::vector<std::unique_ptr<Record>>::iterator, Record>;
    using const_iterator =
        Iterator<typename std::vector<std::unique_ptr<Record>>::const_iterator, const Record>;
    iterator begin() { return iterator(items_.begin()); }
    iterator end() { return iterator(items_.end()); }
    const_iterator begin() const { return const_iterator(items_.begin()); }
    const_iterator end() const { return const_iterator(items_.end()); }

  private:
    void CopyFrom(const OwningArray& other) {
        items_.clear();
        for (const auto& item : other.items_)
            items_.push_back(std::make_unique<Record>(*item));
    }

    const char* name_;
    std::vector<std::unique_ptr<Record>> items_;
};
