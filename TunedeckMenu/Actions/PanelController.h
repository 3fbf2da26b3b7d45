#pragma once

#include "TunedeckMenu/Actions/FieldCopier.h"
#include "TunedeckMenu/Actions/FolderActions.h"
#include "TunedeckMenu/Actions/LibraryActions.h"
#include "TunedeckMenu/Actions/LinkActions.h"
#include "TunedeckMenu/Actions/ServiceActions.h"
#include "TunedeckMenu/Actions/UpdateActions.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Panel/PanelActions.h"

namespace tunedeck {

/// Owns the panel's actions, each of which connects to its signals, and implements those too small for a class.
class PanelController final : public PanelActions {
public:
    PanelController(MenuModel& model, const MenuServices& services);

    /// Shared with the first-run window.
    LinkActions& links() { return m_links; }

private:
    FieldCopier m_copier;
    ServiceActions m_service;
    FolderActions m_folder;
    LibraryActions m_library;
    LinkActions m_links;
    UpdateActions m_update;
};

} // namespace tunedeck
