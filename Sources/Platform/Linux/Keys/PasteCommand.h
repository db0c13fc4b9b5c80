#pragma once

/// The key combinations with which programs paste.
enum class PasteCommand {
    ControlV,
    /// In terminals.
    ControlShiftV,
    /// Where that alone pastes, and in layouts without a V.
    ShiftInsert,
};
