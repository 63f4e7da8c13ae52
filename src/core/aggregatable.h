#pragma once

#include <atomic>

#include "core/module_lock.h"
#include "platform/com.h"
#include "platform/com_ptr.h"
#include "platform/marshaler.h"

/// Base of an object that the class factory creates, alone or as part of another object. It answers
/// IUnknown and its one interface, and keeps the library loaded while it lives.
template <typename I>
class Aggregatable : public I {
 public:
  Aggregatable(const Aggregatable&) = delete;
  Aggregatable& operator=(const Aggregatable&) = delete;

  // Of the whole: the outer object's, or this object's own when it stands alone.
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override {
    return m_controlling->QueryInterface(riid, ppvObject);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return m_controlling->AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return m_controlling->Release(); }

  /// The object's own IUnknown, which an outer object holds and delegates to.
  IUnknown* OwnUnknown() { return &m_own; }

  /// Second step of creation, for what can fail. The marshaler is made and never handed out.
  HRESULT FinalConstruct() {
    return CreateFreeThreadedMarshaler(m_controlling, m_marshaler.Receive());
  }

 protected:
  Aggregatable(IUnknown* outer, REFIID iid)
      : m_own(this, iid), m_controlling(outer != nullptr ? outer : &m_own) {}
  virtual ~Aggregatable() = default;

 private:
  class Own final : public IUnknown {
   public:
    Own(Aggregatable* object, REFIID iid) : m_object(object), m_iid(iid) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) override {
      if (ppvObject == nullptr) return E_POINTER;
      *ppvObject = nullptr;
      IUnknown* answer = nullptr;
      if (riid == IID_IUnknown) {
        *ppvObject = answer = this;
      } else if (riid == m_iid) {
        I* object = m_object;
        *ppvObject = object;
        answer = object;
      }
      if (answer == nullptr) return E_NOINTERFACE;
      answer->AddRef();
      return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_count; }
    ULONG STDMETHODCALLTYPE Release() override {
      const ULONG count = --m_count;
      if (count == 0) {
        // What touches the object while it goes must not make it go twice.
        m_count = 1;
        delete m_object;
      }
      return count;
    }

   private:
    Aggregatable* const m_object;
    const IID m_iid;
    std::atomic<ULONG> m_count{1};
  };

  // Declared first, so it outlives everything below.
  ModuleLock m_lock;
  Own m_own;
  IUnknown* const m_controlling;
  ComPtr<IUnknown> m_marshaler;
};
