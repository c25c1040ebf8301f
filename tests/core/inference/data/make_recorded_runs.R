# Writes recorded_runs.csv: values of four parameters of 60 runs; Spearman's correlations by R's cor(), which ranks
# each pair anew over the runs that have both values; and distances of passing runs and others by R's ks.test().
# Rscript make_recorded_runs.R (in this folder)
set.seed(42)
n <- 60
runs <- data.frame(
  passing = rep(c(1, 0, 0), n / 3),
  a = round(runif(n), 3),
  b = sample(1:4, n, replace = TRUE),
  c = round(rnorm(n), 2),
  d = NA)
runs$d <- round(exp(runs$a + 0.5 * rnorm(n)), 2)
runs$c[c(3, 10, 28, 41)] <- NA
runs$d[c(10, 17)] <- NA
runs$c[5] <- Inf
runs$c[6] <- -Inf
out <- file("recorded_runs.csv", "w")
writeLines(sprintf("# Rscript make_recorded_runs.R, R %s", getRversion()), out)
writeLines("# run,passing,a,b,c,d then group,first,second,correlation, then distances", out)
for (i in seq_len(n))
  writeLines(paste(c("run", runs$passing[i], sapply(runs[i, 2:5], function(x) ifelse(is.na(x), "nan", format(x)))),
                   collapse = ","), out)
groups <- list(all = rep(TRUE, n), passing = runs$passing == 1, others = runs$passing == 0)
for (group in names(groups))
  for (first in 1:3)
    for (second in (first + 1):4)
      writeLines(sprintf("%s,%d,%d,%.15g", group, first - 1, second - 1,
                         cor(runs[groups[[group]], first + 1], runs[groups[[group]], second + 1],
                             method = "spearman", use = "pairwise.complete.obs")), out)
for (parameter in 1:4) {
  values <- runs[[parameter + 1]]
  test <- suppressWarnings(ks.test(na.omit(values[runs$passing == 1]), na.omit(values[runs$passing == 0])))
  writeLines(sprintf("distance,%d,%d,%.15g", parameter - 1, parameter - 1, test$statistic), out)
}
close(out)
