#include "core/glo.h"

namespace qrn {

Glo glo;

Exercise::Exercise() = default;
Exercise::Exercise(const Exercise&) = default;
Exercise::Exercise(Exercise&&) noexcept = default;
Exercise& Exercise::operator=(const Exercise&) = default;
Exercise& Exercise::operator=(Exercise&&) noexcept = default;
Exercise::~Exercise() = default;
bool Exercise::operator==(const Exercise&) const = default;

Session::Session() = default;
Session::Session(const Session&) = default;
Session::Session(Session&&) noexcept = default;
Session& Session::operator=(const Session&) = default;
Session& Session::operator=(Session&&) noexcept = default;
Session::~Session() = default;

}  // namespace qrn

template class std::vector<qrn::RiskRecord>;
template class std::vector<qrn::CategoryRecord>;
template class std::vector<qrn::LookUpList>;
template class std::vector<qrn::LookUpCombo>;
template class std::vector<qrn::DemographicQuestion>;
template class std::vector<qrn::OverlayBoundary>;
