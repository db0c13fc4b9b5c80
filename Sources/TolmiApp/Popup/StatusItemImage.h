#pragma once

#include "Platform/Application.h"

#include <QIcon>

/// The program's picture in a panel of this look: one colour, as the other pictures there have.
QIcon statusItemImage(Appearance panel);
