#include "Views/ProfileFixture.h"

void ProfileFixture::grantEverything() {
    m_place.grantEverything();
    m_place.model->refresh();
}

void ProfileFixture::choose(const QString &path) {
    m_place.panel.choose(path.isEmpty() ? std::nullopt : std::optional(FileURL(path)));
}
