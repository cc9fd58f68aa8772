#pragma once

/// The fields of the plug-in's info record, in the order in which the host declares them.
constexpr char pluginDisplayName[] = "LORVA plugin Open source";
constexpr char pluginProductName[] = "Hesko";
constexpr char pluginCreator[] = "KUB-TLM";
constexpr char pluginVersion[] = "0.0";
constexpr char pluginText[] = "HESKO Log Interpretation Software.";
constexpr int pluginLicense = 0;

/// What the init function returns when the manager could not be made.
constexpr char pluginInitFailure[] = "Cannot instantiate LORVA OS plugin";
