#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>

#include "tessaline/values/vb_error.h"

namespace tessaline {

// The base of everything a value can refer to: hosts, XML nodes, controls, pictures.
// Objects are counted references; a control hands itself out through shared_from_this.
class Object : public std::enable_shared_from_this<Object> {
 public:
  Object() { live().fetch_add(1, std::memory_order_relaxed); }
  Object(const Object&) : Object() {}
  Object& operator=(const Object&) = default;
  virtual ~Object() { live().fetch_sub(1, std::memory_order_relaxed); }

  // Objects alive in the process: what a long run watches for leaks.
  static int64_t liveObjects() { return live().load(std::memory_order_relaxed); }

 private:
  static std::atomic<int64_t>& live() {
    static std::atomic<int64_t> count{0};
    return count;
  }
};

// A counted reference that behaves like an object variable: it may be Nothing, and a
// member called through Nothing raises 91 instead of crashing.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}
  Ref(std::shared_ptr<T> ptr) : ptr_(std::move(ptr)) {}
  template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  Ref(std::shared_ptr<U> ptr) : ptr_(std::move(ptr)) {}
  template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  Ref(const Ref<U>& other) : ptr_(other.shared()) {}

  T* operator->() const {
    if (!ptr_) throw VbError(err::ObjectNotSet);
    return ptr_.get();
  }
  T& operator*() const { return *operator->(); }

  bool isNothing() const noexcept { return !ptr_; }
  explicit operator bool() const noexcept { return static_cast<bool>(ptr_); }
  T* get() const noexcept { return ptr_.get(); }
  const std::shared_ptr<T>& shared() const noexcept { return ptr_; }
  void reset() noexcept { ptr_.reset(); }

  template <class U>
  bool operator==(const Ref<U>& other) const noexcept {
    return static_cast<const void*>(identity(ptr_.get())) ==
           static_cast<const void*>(identity(other.get()));
  }

 private:
  template <class P>
  static const Object* identity(P* p) {
    if constexpr (std::is_base_of_v<Object, P>) {
      return p;
    } else {
      return dynamic_cast<const Object*>(p);
    }
  }

  std::shared_ptr<T> ptr_;
};

// The cast that a typed object variable makes on assignment: Nothing stays Nothing, an
// object that isn't of the type gives Nothing here (callers that must fail raise 13).
template <class T, class U>
Ref<T> refCast(const Ref<U>& from) {
  return Ref<T>(std::dynamic_pointer_cast<T>(from.shared()));
}
template <class T, class U>
Ref<T> refCast(const std::shared_ptr<U>& from) {
  return Ref<T>(std::dynamic_pointer_cast<T>(from));
}

// A counted reference to an object from its raw address (the object must be owned by a
// shared_ptr already).
template <class T>
Ref<T> selfRef(T* self) {
  auto shared = self->shared_from_this();
  return Ref<T>(std::dynamic_pointer_cast<T>(shared));
}

}  // namespace tessaline
