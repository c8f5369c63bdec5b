# Printing from screens. Masters, estimating and jobs link it.
mirsa_screens(core_reports
  SOURCES ReportErrors.cpp ReportLaunch.cpp papers/BehindTraveler.cpp
  LINK core_papers core_rules mirsa_report_preview)
