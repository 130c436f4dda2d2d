#include "scanner/NetData.h"

#include "common/Image.h"

namespace velq
{

std::shared_ptr<NetData> NetData::make(const Texts &texts)
{
    auto item = std::make_shared<NetData>();
    item->setTitle(texts.title);
    item->setDes(texts.des);
    item->setImage(Image::imageNamed(texts.image + QStringLiteral("_normal")));
    item->setSelectImage(Image::imageNamed(texts.image + QStringLiteral("_select")));
    item->setIgnoreKey(texts.ignoreKey);
    item->setNoShowIgnore(texts.noShowIgnore);
    return item;
}

void NetData::setResult(const NetStatus &line)
{
    setIssue(line.error ? 1 : 0);
    setErrorStatus({std::make_shared<NetStatus>(line)});
}

} // namespace velq
