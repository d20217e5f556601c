#pragma once

/// Names of the dynamic properties that plugins set for the plot and the host.
namespace DynamicProperty
{

constexpr char ShowOnToolbar[] = "dpShowOnToolbar"; ///< bool: the host offers the container on its tool bar
constexpr char WindowFlags[] = "dpWindowFlags";     ///< unsigned int: Qt::WindowFlags of the container window
constexpr char WindowModal[] = "dpWindowModal";     ///< bool: modality of the container window
constexpr char WindowAddSizeGrip[] = "dpSizeGrip";  ///< bool: the container window has a size grip
constexpr char CaptureX[] = "dpNameX";              ///< text: name of a curve's X source
constexpr char CaptureY[] = "dpNameY";              ///< text: name of a curve's Y source

} // namespace DynamicProperty
