#pragma once

#include "Platform/OpenPanel.h"

/// The desktop's dialog for opening, else that of the toolkit. Needs a QApplication.
class QtOpenPanel final : public OpenPanel {
public:
    void run(const OpenPanelRequest &request, Answer answer) override;
};
