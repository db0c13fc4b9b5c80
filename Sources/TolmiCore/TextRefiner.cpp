#include "TolmiCore/TextRefiner.h"

namespace {
struct DescribeRefinerError {
    QString operator()(const TextRefinerError::ServiceUnavailable &error) const {
        return QStringLiteral("Text refiner unavailable: ") + error.detail;
    }
    QString operator()(const TextRefinerError::RefinementFailed &error) const {
        return QStringLiteral("Text refinement failed: ") + error.detail;
    }
    QString operator()(const TextRefinerError::Timeout &) const {
        return QStringLiteral("Text refinement timed out.");
    }
};
} // namespace

QString TextRefinerError::errorDescription() const {
    return std::visit(DescribeRefinerError {}, m_case);
}
