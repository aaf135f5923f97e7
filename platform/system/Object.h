// The framework's object base: run-time class information, creation by class, serialisation.
#pragma once

#include "platform/system/Types.h"

class CArchive;
class CObject;

/// What is known at run time about a class of the framework's object tree.
struct CRuntimeClass {
    const char* m_pClassName;
    UINT m_nSchema;                 ///< schema number; high bit set: versionable
    CObject* (*m_pCreateObject)();  ///< makes an object on the heap; null: not creatable

    /// A new object that the caller owns, or null when the class cannot be created by class.
    CObject* CreateObject() const { return m_pCreateObject ? m_pCreateObject() : nullptr; }
};

constexpr UINT VERSIONABLE_SCHEMA = 0x80000000u;

class CObject {
  public:
    virtual const CRuntimeClass* GetRuntimeClass() const { return &classCObject; }
    virtual ~CObject() = default;
    virtual void Serialize(CArchive&) {}

    /// The base's two diagnostic operations; they do nothing in this layer.
    virtual void AssertValid() const {}
    virtual void Dump() const {}

    static inline const CRuntimeClass classCObject{"CObject", 0xFFFF, nullptr};

  protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject& operator=(const CObject&) = default;
};

/// Declares a class's run-time information; goes into the class's declaration.
#define DECLARE_DYNAMIC(class_name)                                                                \
  public:                                                                                          \
    static const CRuntimeClass class##class_name;                                                  \
    const CRuntimeClass* GetRuntimeClass() const override { return &class##class_name; }

#define IMPLEMENT_DYNAMIC(class_name)                                                              \
    const CRuntimeClass class_name::class##class_name { #class_name, 0xFFFF, nullptr };

/// The same for a class that can be created by class and carries a schema number.
#define DECLARE_SERIAL(class_name)                                                                 \
    DECLARE_DYNAMIC(class_name)                                                                    \
    static CObject* CreateObject();

#define IMPLEMENT_SERIAL(class_name, schema)                                                       \
    CObject* class_name::CreateObject() { return new class_name(); }                               \
    const CRuntimeClass class_name::class##class_name {                                            \
#class_name, schema, &class_name::CreateObject                                             \
    };

#define RUNTIME_CLASS(class_name) (&class_name::class##class_name)
