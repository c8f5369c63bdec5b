INSERT INTO Reports (Name, Description, [Module], FileName, OEM, [Default]) VALUES ('Customer List', 'All customers with address and contact.', 'Customer', 'Customers.rpt', 1, True);
INSERT INTO Reports (Name, Description, [Module], FileName, OEM, [Default]) VALUES ('Estimate Quote', 'The quote as the customer receives it.', 'Estimates', 'Estimate_Quote.rpt', 1, True);
INSERT INTO Reports (Name, Description, [Module], FileName, OEM, [Default]) VALUES ('Job Report', 'A job with its estimate against actual, operation by operation.', 'Jobs', 'Job_Report.rpt', 1, True);
INSERT INTO Reports (Name, Description, [Module], FileName, OEM, [Default]) VALUES ('Job Traveler', 'The traveler that goes through the shop with the job.', 'Jobs', 'Job_Traveler.rpt', 1, False);
INSERT INTO Reports (Name, Description, [Module], FileName, OEM, [Default]) VALUES ('Job Traveler with Notes', 'The traveler with the notes of each operation.', 'Jobs', 'Job_Traveler_Notes.rpt', 1, False);
INSERT INTO Reports (Name, Description, [Module], FileName, OEM, [Default]) VALUES ('Vendor List', 'All vendors and contractors with address and contact.', 'Vendor', 'Vendors.rpt', 1, True);
INSERT INTO Reports (Name, Description, [Module], FileName, OEM, [Default]) VALUES ('Employee List', 'All employees with address, shift and status.', 'Employee', 'Employees.rpt', 1, True);
