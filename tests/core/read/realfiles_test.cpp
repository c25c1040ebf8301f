#include <runsieve/core/read/Hdf5Reader.h>
#include <runsieve/core/read/NpzReader.h>

#include "support/ScanOfFile.h"
#include "support/TempFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

// The files were written by NumPy 1.24 and h5py 3.7:
//   v = np.arange(12, dtype='f8').reshape(2, 3, 2); np.save('values.npy', np.asfortranarray(v))
//   arrays = dict(values=v.astype('>f4'), time=[0, .5, 2], names=['A', 'α'], parameters=np.array([[1, 2], [3,
//   4]], 'i4'),
//                 parameter_names=np.array([b'k1', b'k2']), run=['wt', 'ko'], ok=[True, False],
//                 info=np.array({'a': 1}))
//   np.savez('scan.npz', **arrays); np.savez_compressed('compressed.npz', **arrays)
//   scan.h5: in the group "scan" values=v (compression='gzip', shuffle=True, attrs['names'] = ['A', 'α']),
//            time=[0, .5, 2], ok=np.array([True, False]), strain=['wild', 'mutant']
//   report.h5: 'simulation.sedml/report_1' of 2 x 2 x 3 with the attributes of a SED-ML report as lists of
//   str
namespace runsieve::test {
namespace {

using testing::Contains;
using testing::ElementsAre;

std::string pathOf(std::string const& name)
{
  return std::string(RUNSIEVE_SOURCE_DIR) + "/tests/core/read/files/" + name;
}

TEST(RealFiles, AnArrayOfNumPyInFortranOrder)
{
  const ScanFile file = readNpy("values.npy", TempFolder::contentOf(pathOf("values.npy")), {});
  EXPECT_THAT(valuesOf(file.scan, "output 1", 0), ElementsAre(0, 2, 4));
  EXPECT_THAT(valuesOf(file.scan, "output 2", 1), ElementsAre(7, 9, 11));
}

TEST(RealFiles, ArchivesOfNumPyStoredAndCompressed)
{
  for (const char* name : {"scan.npz", "compressed.npz"}) {
    const std::string bytes = TempFolder::contentOf(pathOf(name));
    EXPECT_TRUE(isNpz(bytes));
    const ScanFile file = readNpz(name, bytes, {});
    EXPECT_THAT(file.scan.times, ElementsAre(0, 0.5, 2));
    EXPECT_THAT(outputsOf(file.scan), ElementsAre("A", "\xCE\xB1"));
    EXPECT_THAT(valuesOf(file.scan, "\xCE\xB1", 1), ElementsAre(7, 9, 11));
    EXPECT_THAT(keysOf(file.scan), ElementsAre("wt", "ko"));
    EXPECT_THAT(parametersOf(file.scan), ElementsAre("k1", "k2", "ok"));
    EXPECT_THAT(file.scan.parameters[1].values, ElementsAre(2, 4));
    EXPECT_THAT(file.scan.parameters[2].values, ElementsAre(1, 0));
    EXPECT_THAT(rolesOf(file.report), Contains("info: ignored"));
  }
}

TEST(RealFiles, AnHdf5FileOfH5py)
{
  const ScanFile file = readHdf5(pathOf("scan.h5"), {});
  EXPECT_THAT(file.scan.times, ElementsAre(0, 0.5, 2));
  EXPECT_THAT(outputsOf(file.scan), ElementsAre("A", "\xCE\xB1"));
  EXPECT_THAT(valuesOf(file.scan, "\xCE\xB1", 1), ElementsAre(7, 9, 11));
  EXPECT_THAT(parametersOf(file.scan), ElementsAre("ok", "strain"));
  EXPECT_THAT(file.scan.parameters[0].values, ElementsAre(1, 0));
  EXPECT_THAT(file.scan.parameters[1].texts, ElementsAre("wild", "mutant"));
}

TEST(RealFiles, AReportOfH5py)
{
  const ScanFile file = readHdf5(pathOf("report.h5"), {});
  EXPECT_EQ(file.report.format, "HDF5, report of SED-ML");
  EXPECT_THAT(file.scan.times, ElementsAre(0, 1, 2));
  EXPECT_THAT(outputsOf(file.scan), ElementsAre("S1"));
  EXPECT_THAT(valuesOf(file.scan, "S1", 1), ElementsAre(4, 5, 6));
}

} // namespace
} // namespace runsieve::test
