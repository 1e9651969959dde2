#ifndef CATMacForIUnknown_H
#define CATMacForIUnknown_H

#include "CATMetaClass.h"

#include <type_traits>

// What every class of the platform's object model declares and defines about itself. Proposed: what the macros stand
// for.
#define CATDeclareInterface                                                                                            \
public:                                                                                                                \
    static const char* __stdcall ClassName();                                                                          \
    static CATClassId ClassId()

#define CATImplementInterface(Class, Basemeta)                                                                         \
    const char* __stdcall Class::ClassName() { return #Class; }                                                        \
    CATClassId Class::ClassId() { return #Class; }                                                                     \
    static_assert(std::is_class<Class>::value, #Class " derives from " #Basemeta)

#define CATDeclareClass                                                                                                \
public:                                                                                                                \
    static CATMetaClass* __stdcall MetaObject();                                                                       \
    static const char* __stdcall ClassName();                                                                          \
    static CATClassId ClassId();                                                                                       \
    static CATBaseUnknown* CreateItself();                                                                             \
    CATMetaClass* __stdcall GetMetaObject() const override;                                                            \
    const char* IsA() const override;                                                                                  \
    int IsAKindOf(const char* iName) const override

/** Typeofclass and Impmeta matter to the platform's dictionary only; this one keeps the class chain. */
#define CATImplementClass(Class, Typeofclass, Basemeta, Impmeta)                                                       \
    CATMetaClass* __stdcall Class::MetaObject() {                                                                      \
        static const CATMetaClass base(#Basemeta, nullptr);                                                            \
        static CATMetaClass meta(#Class, &base);                                                                       \
        return &meta;                                                                                                  \
    }                                                                                                                  \
    const char* __stdcall Class::ClassName() { return #Class; }                                                        \
    CATClassId Class::ClassId() { return #Class; }                                                                     \
    CATMetaClass* __stdcall Class::GetMetaObject() const { return MetaObject(); }                                      \
    const char* Class::IsA() const { return #Class; }                                                                  \
    int Class::IsAKindOf(const char* iName) const { return MetaObject()->IsAKindOf(iName); }                           \
    static_assert(std::is_class<Class>::value, #Typeofclass " " #Impmeta)

#endif
