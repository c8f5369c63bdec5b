# The delivered report files: they are installed beside the program.
set(MIRSA_REPORT_FILES
  reports/Customers.rpt
  reports/Employee_ID_Badges.rpt
  reports/Employees.rpt
  reports/Estimate_Quote.rpt
  reports/Job_Report.rpt
  reports/Job_Traveler.rpt
  reports/Job_Traveler_Notes.rpt
  reports/Jobs_List.rpt
  reports/Shipping_History.rpt
  reports/Vendors.rpt
  reports/bCommands.rpt
  reports/estimate_bom.rpt
  reports/job_bom.rpt)
