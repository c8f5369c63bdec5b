# The catalogue of operations: its rules and its screens.
set(ESTIMATING_CATALOGUE_RULES OperationCatalogue.cpp)
set(ESTIMATING_CATALOGUE_SOURCES
    Catalogue.cpp
    frmOperAddEdit.cpp
    frmOperDeptAddEdit.cpp
    frmOperation.cpp)
