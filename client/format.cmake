seedmote_room(client-format
  SOURCES PercentEscapes.cpp PercentEscapes.h RVUtility.cpp RVUtility.h
  ROOMS overlay-state platform-core)

seedmote_test(client-format-test
  SOURCES tests/PercentEscapesTest.cpp tests/RVUtilityTest.cpp
  ROOMS client-format test-services
  LIBRARIES core-test-main)
