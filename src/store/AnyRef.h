#pragma once
// What a "REF" entry of the store holds: shared ownership of any object, given back with its
// type checked, so that a list can carry forms, controls or other trees without knowing them.

#include <memory>
#include <typeinfo>

class AnyRef {
public:
    AnyRef() = default;
    AnyRef(std::nullptr_t) {}
    template <class T>
    AnyRef(std::shared_ptr<T> vObject) : ptr_(std::move(vObject)), type_(&typeid(T)) {}

    template <class T>
    std::shared_ptr<T> As() const
    {
        if (!ptr_ || *type_ != typeid(T))
            return nullptr;
        return std::static_pointer_cast<T>(ptr_);
    }

    bool IsNull() const { return !ptr_; }
    explicit operator bool() const { return static_cast<bool>(ptr_); }
    const void* Get() const { return ptr_.get(); }
    friend bool operator==(const AnyRef& a, const AnyRef& b) { return a.ptr_ == b.ptr_; }

private:
    std::shared_ptr<void> ptr_;
    const std::type_info* type_ = nullptr;
};
