#pragma once

#include "TolmiApp/Onboarding/OnboardingWizardModel.h"

#include <QtQml/qqml.h>

// Names by which views know types of the logic, which itself does not know QML.

/// The model of the wizard of the first start, made by the program.
struct OnboardingWizardModelForViews {
    Q_GADGET
    QML_FOREIGN(OnboardingWizardModel)
    QML_NAMED_ELEMENT(OnboardingWizardModel)
    QML_UNCREATABLE("The program makes it")
};
