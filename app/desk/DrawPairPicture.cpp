#include "app/desk/DeskCommands.h"

#include "app/render/OffscreenView.h"
#include "app/store/FileEnding.h"
#include "app/view/PairScatter.h"

#include <runsieve/core/text/ShownText.h>

#include <vtkContextScene.h>
#include <vtkNew.h>

namespace runsieve::app {

void drawPairPicture(PairsArguments const& arguments, Scan const& scan, PairPicture const& picture)
{
  vtkNew<PairScatter> scatter;
  scatter->show(scan, picture.pairs, picture.passing, picture.eligible);
  scatter->setTitle(printable(picture.title));
  scatter->setOpaque(fileEnding(arguments.picture) == ".pdf"); // which is written without translucency
  OffscreenView view(arguments.width, arguments.height);
  view.scene()->AddItem(scatter);
  view.save(arguments.picture);
}

} // namespace runsieve::app
