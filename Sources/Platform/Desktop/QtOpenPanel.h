#pragma once

#include "Platform/OpenPanel.h"

/// The desktop's open dialog, else the toolkit's. Needs a QApplication.
class QtOpenPanel final : public OpenPanel {
public:
    void run(const OpenPanelRequest &request, Answer answer) override;
};
