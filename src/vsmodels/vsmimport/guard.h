// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspbased/veskqt.h"
#include "vsputils/cveskexception.h"

#include <exception>

#ifdef __GLIBCXX__
#include <cxxabi.h>
#endif

namespace Vesk {

/// Codes of the records that the module puts into the host's log.
enum ErrorCode
{
    ErrorCodeUnknown = 20030001,
    ErrorCodeStandard = 20030009
};

/// The boundary that no exception crosses: runs `operation` and returns its result, or flushes what
/// was thrown to the host's log and returns `failure`. Use it through VESK_GUARDED.
template <typename Result, typename Operation>
Result guarded(Result failure, const char* file, int line, Operation operation)
{
    try {
        return operation();
    } catch (CVeskException& e) {
        CVeskException(e).flush();
#ifdef __GLIBCXX__
    } catch (abi::__forced_unwind&) {
        throw; // a thread being terminated: not an error, and glibc aborts when it is swallowed
#endif
    } catch (std::exception& e) {
        CVeskException(ErrorCodeStandard, fromAscii(e.what()), QString::fromLocal8Bit(file), line)
            .flush();
    } catch (...) {
        CVeskException(ErrorCodeUnknown, QLatin1String("Unknown exception"),
                       QString::fromLocal8Bit(file), line)
            .flush();
    }
    return failure;
}

} // namespace Vesk

/// VESK_GUARDED(failure, expression): the value of `expression`, or `failure` when it throws.
#define VESK_GUARDED(failure, ...)                                                                 \
    Vesk::guarded((failure), __FILE__, __LINE__, [&]() -> decltype(failure) { return __VA_ARGS__; })

/// VESK_GUARDED_CALL(expression): evaluates `expression`; true unless it throws.
#define VESK_GUARDED_CALL(...)                                                                     \
    Vesk::guarded(false, __FILE__, __LINE__, [&]() -> bool {                                       \
        __VA_ARGS__;                                                                               \
        return true;                                                                               \
    })
