# The names of this SDK's own files, read by cmake/HostApi.cmake.
set(HOST_SDK_LIBRARIES secondhost)
