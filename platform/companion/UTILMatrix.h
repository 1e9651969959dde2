#ifndef UTILMatrix_H
#define UTILMatrix_H

/** Matrix of the companion library; rows and columns count from 0. The matrix does not own its table here. */
class UTILMatrix {
public:
    UTILMatrix(int iRows, int iColumns, double** iTable) : _nblig(iRows), _nbcol(iColumns), _pp_mat(iTable) {}
    int get_nblig() const { return _nblig; }
    int get_nbcol() const { return _nbcol; }
    double** get_pp_mat() const { return _pp_mat; }

private:
    int _nblig;
    int _nbcol;
    double** _pp_mat;
};
static_assert(sizeof(UTILMatrix) == 16 && alignof(UTILMatrix) == 8, "the companion lays the matrix out in this order");

#endif
