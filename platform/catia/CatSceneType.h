#ifndef CatSceneType_H
#define CatSceneType_H

/** A partial scene (a difference to the assembly) knows the products that were changed in it; a full one knows every
 * product that it shows. */
enum CatSceneType { CatSceneTypeDelta, CatSceneTypeFull };

#endif
