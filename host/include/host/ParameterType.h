#pragma once

/// Names of a module's groups of inputs and outputs, see KAROModuleInterface::getParameterMapByName().
namespace ParameterType
{

constexpr char DigitalInput[] = "io0";
constexpr char AnalogInput[] = "io1";
constexpr char DigitalOutput[] = "io2";

} // namespace ParameterType
