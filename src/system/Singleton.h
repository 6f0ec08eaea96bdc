// The shape of every global service: an instance pointer and a reference count per
// type. Services are acquired and released on the main thread only; get() may be read
// from any thread, because services live as long as the main loop.
#pragma once

#include <cstdint>
#include <string>
#include <typeinfo>

#include "system/Exception.h"

namespace System {

template <class T>
class Singleton {
 public:
  // Creates the service on first use, then counts one more holder. Services give every
  // member an initializer: memory zeroed before a constructor is not something the
  // compiler keeps, so nothing may rely on it.
  static T* acquire() {
    if (!instance_) instance_ = construct();
    ++count_;
    return instance_;
  }

  static void release() {
    --count_;
    if (count_ <= 0 && instance_) {
      T* instance = instance_;
      instance_ = nullptr;
      count_ = 0;
      destroy(instance);
    }
  }

  static T* get() noexcept { return instance_; }
  static std::int32_t count() noexcept { return count_; }

  // Rebuilds a window content after a change of style or language: same count, new
  // object, and the new object creates its window at once.
  static void recreateInstance() {
    if (!instance_) {
      const std::string place = "System::Singleton<class " + std::string(T::kClassName) + ">::recreateInstance";
      throw NoteException(place.c_str(), "singleton instance not created.");
    }
    destroy(instance_);
    instance_ = nullptr;
    instance_ = construct();
    instance_->createWindow(true);
  }

 private:
  static T* construct() {
    return new T();
  }

  static void destroy(T* instance) {
    delete instance;
  }

  static inline T* instance_ = nullptr;
  static inline std::int32_t count_ = 0;
};

// Holds one reference for a scope; used where a service needs another one for its
// whole life.
template <class T>
class SingletonRef {
 public:
  SingletonRef() : instance_(Singleton<T>::acquire()) {}
  ~SingletonRef() { Singleton<T>::release(); }
  SingletonRef(const SingletonRef&) = delete;
  SingletonRef& operator=(const SingletonRef&) = delete;
  T* operator->() const noexcept { return instance_; }
  T& operator*() const noexcept { return *instance_; }
  T* get() const noexcept { return instance_; }

 private:
  T* instance_;
};

}  // namespace System
