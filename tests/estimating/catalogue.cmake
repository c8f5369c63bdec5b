# Tests of the catalogue of operations, on a database of the shop.
set(ESTIMATING_CATALOGUE_TESTS OperationCatalogueTest.cpp)
