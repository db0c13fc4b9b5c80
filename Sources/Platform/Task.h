#pragma once

#include <QCoroTask>

#include <exception>
#include <functional>

/// A long operation that may suspend. It starts at once and runs up to its first suspension.
template <typename T = void>
using Task = QCoro::Task<T>;

/// Lets `task` run to its end unattended. An exception that leaves it is a defect of the program: it is
/// logged and handed to the handler of setUnhandledTaskErrorHandler.
void launch(Task<> task);

/// Sets what launch() does with an exception besides logging it (tests fail on it) and gives what it did
/// before; an empty handler does nothing more.
std::function<void(std::exception_ptr)> setUnhandledTaskErrorHandler(
    std::function<void(std::exception_ptr)> handler);
