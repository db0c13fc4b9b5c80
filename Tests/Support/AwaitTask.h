#pragma once

#include "Foundation/Task.h"

#include <optional>

/// How a task ended: with a value or an exception.
template <typename T>
struct TaskOutcome {
    std::optional<T> value;
    std::exception_ptr error;

    bool hasEnded() const { return value || error; }
};

/// Runs `task` to its end into `outcome`, which must outlive it.
template <typename T>
Task<> follow(Task<T> task, TaskOutcome<T> &outcome) {
    try {
        outcome.value = co_await task;
    } catch (...) {
        outcome.error = std::current_exception();
    }
}

/// Calls `turn`, which gives other work a chance, until `task` has ended; gives its value or throws what it
/// threw.
template <typename T, typename Turn>
T awaitTask(Task<T> task, Turn turn) {
    TaskOutcome<T> outcome;
    launch(follow(std::move(task), outcome));
    while (!outcome.hasEnded())
        turn();
    if (outcome.error)
        std::rethrow_exception(outcome.error);
    return *std::move(outcome.value);
}
