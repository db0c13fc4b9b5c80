#pragma once

#include "Platform/SavePanel.h"

/// The desktop's save dialog, else the toolkit's. Needs a QApplication.
class QtSavePanel final : public SavePanel {
public:
    void run(const SavePanelRequest &request, Answer answer) override;
};
