// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The boundary to the media engine.
//
// Access: CAVBasedContext::instance() -> avbasedModel() -> w_func(), and from that wrapper the
// engine manager, Blu-ray loaders and image converters.
//
// Interfaces are abstract classes whose operations are identified by their place alone (slot,
// counted from 0): nothing may be inserted or reordered, and there is no virtual destructor, which
// would take slots. Slots without a meaning here are called reservedN; nobody calls them.
//
// Ownership: objects that say so are the caller's and end with their release(). Records and the
// texts in them belong to the engine object that returned them and stay put while it lives. Texts
// passed in need only last for the call. Paths are UTF-8.
//
// Threads: one call at a time on any one object, and on all objects made from it.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(_WIN32)
#ifdef VSPAVBASED_BUILD
#define VSPAVBASED_EXPORT __declspec(dllexport)
#else
#define VSPAVBASED_EXPORT __declspec(dllimport)
#endif
#else
#define VSPAVBASED_EXPORT __attribute__((visibility("default")))
#endif

/// Fixes a record's layout, which is that of an engine with pointers of four bytes. Where pointers
/// are wider the fields keep their order, and there is nothing to check.
#define AVBASED_ASSERT_OFFSET(Record, field, offset)                                               \
    static_assert(sizeof(void*) != 4 || offsetof(Record, field) == (offset),                       \
                  #Record "::" #field " is out of place")
#define AVBASED_ASSERT_SIZE(Record, size)                                                          \
    static_assert(sizeof(void*) != 4 || sizeof(Record) == (size), #Record " has the wrong size")
