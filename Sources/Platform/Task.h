#pragma once

#include <QCoroTask>

/// A long operation that may suspend. It starts at once and runs up to its first suspension.
template <typename T = void>
using Task = QCoro::Task<T>;

/// Lets `task` run to its end unattended. An exception that leaves it is a defect of the program: it is
/// logged and handed to the handler of setUnhandledTaskErrorHandler.
void launch(Task<> task);

/// Sets what launch() does with an exception besides logging it (tests fail on it); an empty handler does
/// nothing more.
void setUnhandledTaskErrorHandler(std::function<void(std::exception_ptr)> handler);
