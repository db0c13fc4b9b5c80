#pragma once

#include "Platform/SavePanel.h"

/// The desktop's dialog for saving, else that of the toolkit. Needs a QApplication.
class QtSavePanel final : public SavePanel {
public:
    void run(const SavePanelRequest &request, Answer answer) override;
};
