seedmote_room(client-format
  SOURCES RVUtility.cpp RVUtility.h
  ROOMS overlay-state platform-core)

seedmote_test(client-format-test
  SOURCES tests/RVUtilityTest.cpp
  ROOMS client-format test-services
  LIBRARIES core-test-main)
