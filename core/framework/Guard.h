// The guard every event dispatch runs through.
#pragma once

#include <exception>
#include <new>
#include <string>

void ReportEscapedError(const std::string& what);

template <typename F>
void Guarded(F&& fn) {
    try {
        fn();
    } catch (const std::bad_alloc&) {
        ReportEscapedError("Not enough memory for this operation. The document is unchanged.");
    } catch (const std::exception& e) {
        ReportEscapedError(e.what());
    } catch (...) {
        ReportEscapedError("The operation failed.");
    }
}
