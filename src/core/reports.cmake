# Printing from screens. Masters, estimating and jobs link it.
mirsa_screens(core_reports
  SOURCES ReportErrors.cpp ReportLaunch.cpp
  LINK core_rules mirsa_report_preview)
