// Counted pointers: an object lives as long as any Vey::Ptr points to it.
#pragma once

#include <atomic>
#include <cstddef>
#include <utility>

namespace Vey {

/// Base of everything that a Ptr can point to: holds the count. Counting is safe from any thread.
class PtrInterface {
public:
    PtrInterface() = default;
    PtrInterface(const PtrInterface &) = delete;
    PtrInterface &operator=(const PtrInterface &) = delete;

    void addReference() const noexcept { references_.fetch_add(1, std::memory_order_relaxed); }

    /// Deletes the object with its last reference.
    void dropReference() const noexcept
    {
        if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete this;
        }
    }

protected:
    virtual ~PtrInterface();

private:
    mutable std::atomic<int> references_{0};
};

/// One reference to a T, or null. T derives from PtrInterface and is made with new.
template <typename T>
class Ptr {
public:
    Ptr() = default;
    Ptr(std::nullptr_t) {}
    Ptr(T *object) : object_(object) { add(); }
    Ptr(const Ptr &other) : object_(other.object_) { add(); }
    Ptr(Ptr &&other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    template <typename Derived>
    Ptr(const Ptr<Derived> &other) : object_(other.get())
    {
        add();
    }
    Ptr &operator=(Ptr other) noexcept
    {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Ptr()
    {
        if (object_) {
            object_->dropReference();
        }
    }

    T *get() const { return object_; }
    T *operator->() const { return object_; }
    T &operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }

private:
    void add() const
    {
        if (object_) {
            object_->addReference();
        }
    }

    T *object_ = nullptr;
};

template <typename T, typename U>
bool operator==(const Ptr<T> &a, const Ptr<U> &b)
{
    return a.get() == b.get();
}

template <typename T, typename U>
bool operator!=(const Ptr<T> &a, const Ptr<U> &b)
{
    return !(a == b);
}

}  // namespace Vey
