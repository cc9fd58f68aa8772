#pragma once

namespace workbench {
class WorkbenchWindow;
}

namespace programs {

/// Shows a newcomer the system at work: the plug-in's window on the open survey, the first well displayed, the first
/// correlation open behind it. What the survey has not is left out; without a survey or a plug-in nothing happens.
void showTour(const workbench::WorkbenchWindow &window);

} // namespace programs
