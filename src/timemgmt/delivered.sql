INSERT INTO Shifts (Description, EarliestSignIn, LatestSignOut) VALUES ('Day', #06:00:00 AM#, #06:00:00 PM#);
