mirsa_test(test_core_reports
  SOURCES ReportLaunchTest.cpp
  LINK mirsa_test_shop core_reports)
