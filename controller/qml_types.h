// What QML gets by name from this folder and below, besides the controller.
#pragma once

// Registers VRListModel (for its roles), ConnectionState (for its values) and the
// singleton StreamingChoices in the module ORBManager 1.0. Once, before the first page is loaded.
void registerControllerTypes();
